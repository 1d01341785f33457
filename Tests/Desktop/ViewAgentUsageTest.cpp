#include <gmock/gmock.h>

#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>

#include "Platform/Label.h"
#include "Platform/UserDefaults.h"
#include "Runner/AgentUsageMenuItem.h"
#include "Runner/AgentUsageMenuView.h"
#include "Runner/SharedObjects.h"
#include "Tests/Desktop/ViewTest.h"
#include "Tests/Runner/FakeUsageProvider.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;

/// The coding agents' row in a real menu.
class ViewAgentUsageTest : public ViewTest, public MenuDelegate {
 protected:
  void SetUp() override {
    ViewTest::SetUp();
    setenv("TZ", "UTC", 1);
    shared_ = std::make_unique<SharedObjects>(platform());
    defaults().setBoolean("agentUsage.authorized.v2", true);
    makeMenu();
  }
  void TearDown() override {
    endMenu();
    shared_.reset();
    ViewTest::TearDown();
  }

  /// As a start of the host makes it.
  void makeMenu() {
    endMenu();
    icon_ = platform().statusBar().makeStatusItem(-2);
    item_ = std::make_unique<AgentUsageMenuItem>(platform(), provider_, *icon_);
    auto menu = std::make_shared<Menu>(this);
    menu->addItem(item_->item());
    menu->addItem(MenuItem::separator());
    menu->addItem(std::make_shared<MenuItem>("Settings…", "openSettings", nullptr));
    icon_->setMenu(menu);
  }
  void endMenu() {
    item_.reset();
    icon_.reset();
  }

  void menuNeedsUpdate(Menu&) override {}
  void menuWillOpen(Menu&) override {
    ++openings_;
    item_->menuWillOpen();
  }
  void menuDidClose(Menu&) override {}

  UserDefaults& defaults() { return platform().userDefaults(); }
  AgentUsageMenuView& view() { return item_->view(); }
  void open() {
    icon_->performClick();
    ASSERT_TRUE(becomesTrue([&] { return menuIsOpen(); }));
    pass(milliseconds(50));
  }
  void close() {
    icon_->cancelTrackingWithoutAnimation();
    ASSERT_TRUE(becomesTrue([&] { return !menu(); }));
  }
  void openWith(const UsageFetchResult& result) {
    open();
    provider_->answer(result);
    pass(milliseconds(50));
  }

  const std::shared_ptr<FakeUsageProvider> provider_ = std::make_shared<FakeUsageProvider>();
  int openings_ = 0;

 private:
  std::unique_ptr<SharedObjects> shared_;
  std::shared_ptr<StatusItem> icon_;
  std::unique_ptr<AgentUsageMenuItem> item_;
};

TEST_P(ViewAgentUsageTest, ANewHeightLeavesTheMenuWhereItWas) {
  openWith(usageWith(2, 3));
  const auto before = menu()->geometry();
  EXPECT_EQ(openings_, 1);
  click(*shown(view().agentRow()));
  ASSERT_TRUE(becomesTrue([&] { return !menu(); }));
  ASSERT_TRUE(becomesTrue([&] { return menuIsOpen(); }));
  pass(milliseconds(300));
  EXPECT_EQ(openings_, 2);
  EXPECT_EQ(menu()->geometry().topLeft(), before.topLeft());
  EXPECT_EQ(menu()->geometry().size(), before.size() + QSize(0, 50 + 5 * 18));

  provider_->answer(usageWith(0, 0));
  EXPECT_TRUE(becomesTrue([&] { return menu()->height() == before.height() + 50; }));
  EXPECT_EQ(openings_, 2);

  // By the keyboard, too.
  input().tap(key::Down);
  pass(milliseconds(20));
  input().tap(key::Return);
  ASSERT_TRUE(becomesTrue([&] { return openings_ == 3 && menuIsOpen(); }));
  EXPECT_EQ(menu()->geometry(), before);
}

TEST_P(ViewAgentUsageTest, TheQuestionHasTheKeyboardOnceTheMenuHasGone) {
  defaults().setBoolean("agentUsage.authorized.v2", false);
  makeMenu();
  open();
  const auto& button = *menu()->findChildren<QPushButton*>().constFirst();
  click(button);
  ASSERT_TRUE(becomesTrue([&] { return QApplication::activeWindow() && !menu(); }));
  pass(milliseconds(50));
  EXPECT_TRUE(provider_->requests.empty());
  input().tap(key::Return);
  ASSERT_TRUE(becomesTrue([&] { return provider_->requests.size() == 1; }));
  EXPECT_TRUE(provider_->requests.front().interactive);
  EXPECT_FALSE(QApplication::activeWindow());
}

TEST_P(ViewAgentUsageTest, EachStateHasRoomForAllItsWords) {
  const auto expectRoom = [&](const char* state) {
    SCOPED_TRACE(state);
    for (const auto* label : menu()->findChildren<QLabel*>()) {
      if (!label->isVisible()) continue;
      EXPECT_FALSE(label->text().contains(QChar(0x2026))) << label->text().toStdString();
      EXPECT_TRUE(label->window()->rect().contains(
          QRect(label->mapTo(label->window(), QPoint()), label->size())));
    }
    close();
  };
  openWith(usageWith(1, 1));
  expectRoom("closed");
  defaults().setBoolean("agentUsage.expanded.v1", true);
  makeMenu();
  openWith(TransientFailure{});
  expectRoom("accordion-empty");
  openWith(usageWith(4, 5));
  expectRoom("accordion");
  openWith(ReauthorizationRequired{});
  expectRoom("needs-reconnect");
  openWith(CredentialsUnavailable{});
  expectRoom("not-connected");
  defaults().setBoolean("agentUsage.visible.claude-code", false);
  open();
  expectRoom("hidden");
}

INSTANTIATE_TEST_SUITE_P(Views, ViewAgentUsageTest, viewAppearances, viewAppearanceName);

}  // namespace
}  // namespace zephyx
