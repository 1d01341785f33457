#include <gmock/gmock.h>

#include <QtGui/QAccessible>
#include <QtWidgets/QApplication>
#include <QtWidgets/QMenu>
#include <map>

#include "Platform/UserDefaults.h"
#include "Runner/AgentUsageMenuItem.h"
#include "Runner/AgentUsageMenuView.h"
#include "Runner/BrightnessMenuItemView.h"
#include "Runner/ExternalDisplayBrightness.h"
#include "Runner/HotkeyManager.h"
#include "Runner/InputLockController.h"
#include "Runner/InputLockMenuItemView.h"
#include "Runner/MicrophoneMuteController.h"
#include "Runner/SharedObjects.h"
#include "Runner/StatusMenu.h"
#include "Runner/SystemMonitorMenuView.h"
#include "Tests/Desktop/ViewTest.h"
#include "Tests/Runner/FakeUsageProvider.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;

std::string nameOf(QAccessibleInterface& item) {
  return item.text(QAccessible::Name).toStdString();
}

/// As a screen reader goes through a window.
void forEach(QAccessibleInterface* item, const std::function<void(QAccessibleInterface&)>& visit) {
  if (!item || item->state().invisible) return;
  visit(*item);
  for (int index = 0; index < item->childCount(); ++index) {
    auto* child = item->child(index);
    ASSERT_TRUE(child);
    EXPECT_EQ(child->parent(), item) << nameOf(*child);
    EXPECT_EQ(item->indexOfChild(child), index) << nameOf(*child);
    forEach(child, visit);
  }
}

/// The whole status menu, and the heads-up panels: with the mouse, and for a user who has none or
/// does not see.
class ViewAccessibilityTest : public ViewTest, public MenuDelegate {
 protected:
  ViewAccessibilityTest() { height_ = 900; }

  void SetUp() override {
    ViewTest::SetUp();
    QAccessible::setActive(true);
    shared_ = std::make_unique<SharedObjects>(platform());
    platform().userDefaults().setBoolean("agentUsage.authorized.v2", true);
    HotkeyManager::shared().loadConfigs(platform().userDefaults());
    icon_ = platform().statusBar().makeStatusItem(-2);
    monitor_ = std::make_shared<SystemMonitorMenuView>(
        platform().dispatch(), platform().hostStatistics(), platform().temperatureSensors());
    agents_ = std::make_unique<AgentUsageMenuItem>(platform(), provider_, *icon_);
    lock_ = std::make_unique<InputLockController>(platform());
    constexpr auto lockTitle = "Lock Keyboard for Cleaning";
    menu_ = std::make_unique<StatusMenu>(
        *this, HotkeyManager::shared(), platform().userDefaults(), platform().softwareUpdate(),
        StatusMenu::ViewRows{
            .systemMonitor = MenuItem::withView("System Monitor", monitor_),
            .agentUsage = agents_->item(),
            .brightness = MenuItem::withView(
                BrightnessMenuItemView::title,
                std::make_shared<BrightnessMenuItemView>(ExternalDisplayBrightness::shared())),
            .keyboardLock =
                MenuItem::withView(lockTitle, std::make_shared<InputLockMenuItemView>(
                                                  InputLockTarget::keyboard, lockTitle, *lock_)),
        },
        StatusMenu::Actions{.exportAllNotes = [this] { ++exports_; }});
    icon_->setMenu(menu_->menu());
  }
  void TearDown() override {
    icon_.reset();
    menu_.reset();
    agents_.reset();
    lock_.reset();
    monitor_.reset();
    shared_.reset();
    ViewTest::TearDown();
  }

  void menuNeedsUpdate(Menu&) override { menu_->refreshMicMuteItem(isMuted_); }
  void menuWillOpen(Menu&) override {
    monitor_->startMonitoring();
    agents_->menuWillOpen();
  }
  void menuDidClose(Menu&) override { monitor_->stopMonitoring(); }

  void open() {
    icon_->performClick();
    ASSERT_TRUE(becomesTrue([&] { return menuIsOpen(); }));
    if (!provider_->requests.empty()) provider_->answer(usageWith(2, 3));
    pass(milliseconds(50));
  }
  static QAccessibleInterface* focused() {
    return QAccessible::queryAccessibleInterface(menu())->focusChild();
  }
  void press(key::Code code) {
    input().tap(code);
    pass(milliseconds(15));
  }

  std::unique_ptr<InputLockController> lock_;
  std::shared_ptr<StatusItem> icon_;
  bool isMuted_ = false;
  int exports_ = 0;

 private:
  const std::shared_ptr<FakeUsageProvider> provider_ = std::make_shared<FakeUsageProvider>();
  std::unique_ptr<SharedObjects> shared_;
  std::shared_ptr<SystemMonitorMenuView> monitor_;
  std::unique_ptr<AgentUsageMenuItem> agents_;
  std::unique_ptr<StatusMenu> menu_;
};

TEST_P(ViewAccessibilityTest, EachControlOfTheMenuHasANameARoleAndAWayForTheKeyboard) {
  isMuted_ = true;
  open();
  std::map<QAccessibleInterface*, std::string> unreached;
  std::vector<std::string> found;
  forEach(QAccessible::queryAccessibleInterface(menu()), [&](QAccessibleInterface& item) {
    const auto name = nameOf(item);
    const auto role = item.role();
    if (role == QAccessible::Indicator || role == QAccessible::Graphic) {
      EXPECT_NE(name, "");
      found.push_back(name);
    }
    if (!item.state().focusable || item.state().disabled || &item == focused()) return;
    const bool isControl = role == QAccessible::Button || role == QAccessible::Slider ||
                           role == QAccessible::CheckBox || role == QAccessible::MenuItem;
    if (role == QAccessible::PopupMenu || role == QAccessible::Grouping) return;
    EXPECT_TRUE(isControl) << name << ": " << role;
    EXPECT_NE(name, "") << "a " << role << " in " << nameOf(*item.parent());
    unreached[&item] = name;
    found.push_back(name);
  });
  EXPECT_THAT(found,
              testing::IsSupersetOf({"Processor load", "Memory in use", "Claude Code", "Expand",
                                     "Disconnect account", "External Monitor Brightness",
                                     "Lock Keyboard for Cleaning", "Lock Trackpad for Cleaning",
                                     "Mute Microphone", "Open", "Export All Notes", "Quit"}));
  for (std::size_t presses = 0; presses < 2 * found.size(); ++presses) {
    press(key::Down);
    if (auto* item = focused()) unreached.erase(item);
  }
  for (const auto& [item, name] : unreached) ADD_FAILURE() << "no key comes to: " << name;

  forEach(QAccessible::queryAccessibleInterface(menu()), [](QAccessibleInterface& item) {
    const auto name = nameOf(item);
    if (name == "Export All Notes") {
      EXPECT_EQ(item.text(QAccessible::Accelerator), "Shift+Super+E");
    } else if (name == "Mute Microphone") {
      EXPECT_TRUE(item.state().checked);
    } else if (name == "Claude Code" && item.role() == QAccessible::Button) {
      EXPECT_TRUE(item.text(QAccessible::Description).startsWith("Session "));
    }
  });
  press(key::Escape);
  EXPECT_TRUE(becomesTrue([&] { return !menu(); }));
}

TEST_P(ViewAccessibilityTest, TheMouseDragsTheSliderAndTheMenuStaysOpen) {
  open();
  const auto& brightness = ExternalDisplayBrightness::shared();
  const auto& slider = *shown(BrightnessMenuItemView::title);
  const bool isMirrored = GetParam().isMirrored;
  const auto end =
      slider.mapToGlobal(QPoint(isMirrored ? 8 : slider.width() - 8, slider.height() / 2));
  pointAt(end);
  pass(milliseconds(30));
  input().pressButton();
  double level = brightness.last();
  for (int step = 2; step <= 10; ++step) {
    pointAt(end + QPoint(isMirrored ? 10 * step : -10 * step, 0));
    ASSERT_TRUE(becomesTrue([&] { return brightness.last() < level; })) << step;
    level = brightness.last();
  }
  input().releaseButton();
  // A click beside a control is no choice of its row.
  clickAt(slider.mapToGlobal(QPoint(slider.width() / 2, -6)));
  pass(milliseconds(100));
  EXPECT_TRUE(menuIsOpen());
  EXPECT_EQ(brightness.last(), level);

  const auto dark = pixels(slider);
  QApplication::setPalette(QPalette(QColor(0xf0, 0xf0, 0xf0), QColor(0xf6, 0xf6, 0xf6)));
  EXPECT_TRUE(becomesTrue([&] { return pixels(slider) != dark; })) << "it follows the desktop";
}

TEST_P(ViewAccessibilityTest, AKeyThatFlipsTheAccordionLeavesTheKeyboardOnItsRow) {
  open();
  for (int presses = 0; presses < 20 && !(focused() && nameOf(*focused()) == "Claude Code");
       ++presses)
    press(key::Down);
  const auto height = menu()->height();
  for (const bool opens : {true, false}) {
    press(key::Return);
    ASSERT_TRUE(becomesTrue([&] { return menuIsOpen() && (menu()->height() > height) == opens; }));
    pass(milliseconds(50));
    ASSERT_NE(focused(), nullptr);
    EXPECT_EQ(nameOf(*focused()), "Claude Code");
  }
  // It goes on from there.
  press(key::Down);
  EXPECT_EQ(nameOf(*focused()), "Disconnect account");
  press(key::Escape);
  ASSERT_TRUE(becomesTrue([&] { return !menu(); }));
  open();
  EXPECT_EQ(focused(), nullptr);
}

TEST_P(ViewAccessibilityTest, KeyEquivalentsAreFoundInEveryLayout) {
  const struct {
    const char* layout;
    unsigned group;
    std::uint8_t key;
  } cases[] = {{"us", 0, key::E}, {"us,ru", 1, key::E}, {"dvorak", 0, key::D}, {"fr", 0, key::E}};
  for (const auto& each : cases) {
    SCOPED_TRACE(each.layout);
    desktop().run({"setxkbmap", each.layout});
    input().lockLayout(each.group);
    open();
    exports_ = 0;
    input().chord({key::Shift, key::Super, each.key});
    EXPECT_TRUE(becomesTrue([&] { return exports_ == 1 && !menu(); }));
    icon_->cancelTrackingWithoutAnimation();
  }
}

TEST_P(ViewAccessibilityTest, TheHeadsUpPanelsSayTheirWords) {
  MicrophoneMuteController::shared().showHUD(true);
  lock_->showHUD(InputLockTarget::keyboard);
  pass(milliseconds(50));
  std::string words;
  for (auto* window : QApplication::topLevelWidgets()) {
    if (!window->isVisible()) continue;
    forEach(QAccessible::queryAccessibleInterface(window), [&](QAccessibleInterface& item) {
      if (item.role() == QAccessible::StaticText) words += nameOf(item) + ';';
    });
  }
  EXPECT_THAT(words, testing::HasSubstr("Microphone muted;"));
  EXPECT_THAT(words, testing::HasSubstr("Keyboard locked for cleaning — press ⌃⌥⌘K or click the "
                                        "Zephyx menu bar icon to unlock;"));
}

INSTANTIATE_TEST_SUITE_P(Views, ViewAccessibilityTest, viewAppearances, viewAppearanceName);

}  // namespace
}  // namespace zephyx
