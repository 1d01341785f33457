#include <gmock/gmock.h>

#include <QtGui/QAccessible>
#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QSlider>
#include <map>

#include "Runner/MicrophoneMuteController.h"
#include "Tests/Desktop/ViewStatusMenuTest.h"

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
class ViewAccessibilityTest : public ViewStatusMenuTest {
 protected:
  void SetUp() override {
    ViewStatusMenuTest::SetUp();
    QAccessible::setActive(true);
  }

  static QAccessibleInterface* focused() {
    return QAccessible::queryAccessibleInterface(menu())->focusChild();
  }
  void press(key::Code code) {
    input().tap(code);
    runFor(milliseconds(15));
  }
};

TEST_P(ViewAccessibilityTest, EachControlOfTheMenuHasANameARoleAndAWayForTheKeyboard) {
  isMuted_ = true;
  openWith(usageWith(2, 3));
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
  EXPECT_TRUE(runUntil([&] { return !menu(); }));
}

TEST_P(ViewAccessibilityTest, TheMouseDragsTheSliderAndTheMenuStaysOpen) {
  openWith(usageWith(2, 3));
  const auto& brightness = ExternalDisplayBrightness::shared();
  const auto& slider = *menu()->findChildren<QSlider*>().constFirst();
  const bool isMirrored = GetParam().isMirrored;
  const auto end =
      slider.mapToGlobal(QPoint(isMirrored ? 8 : slider.width() - 8, slider.height() / 2));
  pointAt(end);
  runFor(milliseconds(30));
  input().pressButton();
  double level = brightness.last();
  for (int step = 2; step <= 10; ++step) {
    pointAt(end + QPoint(isMirrored ? 10 * step : -10 * step, 0));
    ASSERT_TRUE(runUntil([&] { return brightness.last() < level; })) << step;
    level = brightness.last();
  }
  input().releaseButton();
  // A click beside a control is no choice of its row.
  clickAt(slider.mapToGlobal(QPoint(slider.width() / 2, -6)));
  runFor(milliseconds(100));
  EXPECT_TRUE(menuIsOpen());
  EXPECT_EQ(brightness.last(), level);

  const auto dark = pixels(slider);
  QApplication::setPalette(QPalette(QColor(0xf0, 0xf0, 0xf0), QColor(0xf6, 0xf6, 0xf6)));
  EXPECT_TRUE(runUntil([&] { return pixels(slider) != dark; })) << "it follows the desktop";
}

TEST_P(ViewAccessibilityTest, AKeyThatFlipsTheAccordionLeavesTheKeyboardOnItsRow) {
  openWith(usageWith(2, 3));
  for (int presses = 0; presses < 20 && !(focused() && nameOf(*focused()) == "Claude Code");
       ++presses)
    press(key::Down);
  const auto before = menu()->geometry();
  for (const bool opens : {true, false}) {
    press(key::Return);
    ASSERT_TRUE(
        runUntil([&] { return menuIsOpen() && (menu()->height() > before.height()) == opens; }));
    runFor(milliseconds(50));
    ASSERT_NE(focused(), nullptr);
    EXPECT_EQ(nameOf(*focused()), "Claude Code");
  }
  EXPECT_EQ(menu()->geometry(), before);
  // It goes on from there.
  press(key::Down);
  EXPECT_EQ(nameOf(*focused()), "Disconnect account");
  press(key::Escape);
  ASSERT_TRUE(runUntil([&] { return !menu(); }));
  openWith(usageWith(2, 3));
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
    openWith(usageWith(2, 3));
    exports_ = 0;
    input().chord({key::Shift, key::Super, each.key});
    EXPECT_TRUE(runUntil([&] { return exports_ == 1 && !menu(); }));
    icon_->cancelTrackingWithoutAnimation();
  }
}

TEST_P(ViewAccessibilityTest, TheHeadsUpPanelsSayTheirWords) {
  MicrophoneMuteController::shared().showHUD(true);
  lock_->showHUD(InputLockTarget::keyboard);
  runFor(milliseconds(50));
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
  for (const auto* widget : QApplication::allWidgets()) {
    if (const auto* label = qobject_cast<const QLabel*>(widget); label && label->isVisible()) {
      EXPECT_FALSE(label->text().contains(QChar(0x2026))) << label->text().toStdString();
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Views, ViewAccessibilityTest, viewAppearances, viewAppearanceName);

}  // namespace
}  // namespace zephyx
