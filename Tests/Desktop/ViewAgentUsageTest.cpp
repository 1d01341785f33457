#include <QtWidgets/QApplication>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenu>
#include <QtWidgets/QPushButton>

#include "Tests/Desktop/ViewStatusMenuTest.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;

/// The coding agents' row in the menu.
using ViewAgentUsageTest = ViewStatusMenuTest;

TEST_P(ViewAgentUsageTest, ANewHeightLeavesTheMenuWhereItWas) {
  openWith(usageWith(2, 3));
  const auto before = menu()->geometry();
  EXPECT_EQ(openings_, 1);
  click(*shown(agents().agentRow()));
  ASSERT_TRUE(runUntil([&] { return !menu(); }));
  ASSERT_TRUE(runUntil([&] { return menuIsOpen(); }));
  runFor(milliseconds(300));
  EXPECT_EQ(openings_, 2);
  EXPECT_EQ(menu()->geometry().topLeft(), before.topLeft());
  EXPECT_EQ(menu()->geometry().size(), before.size() + QSize(0, 50 + 5 * 18));

  provider_->answer(usageWith(0, 0));
  EXPECT_TRUE(runUntil([&] { return menu()->height() == before.height() + 50; }));
  EXPECT_EQ(openings_, 2);
}

TEST_P(ViewAgentUsageTest, TheQuestionHasTheKeyboardOnceTheMenuHasGone) {
  defaults().setBoolean("agentUsage.authorized.v2", false);
  makeMenu();
  open();
  const auto& button = *menu()->findChildren<QPushButton*>().constFirst();
  click(button);
  ASSERT_TRUE(runUntil([&] { return QApplication::activeWindow() && !menu(); }));
  runFor(milliseconds(50));
  EXPECT_TRUE(provider_->requests.empty());
  input().tap(key::Return);
  ASSERT_TRUE(runUntil([&] { return provider_->requests.size() == 1; }));
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
    icon_->cancelTrackingWithoutAnimation();
    ASSERT_TRUE(runUntil([&] { return !menu(); }));
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
