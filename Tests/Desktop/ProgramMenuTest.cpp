#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

class ProgramMenuTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() { startDesktop({.tray = true}); }
};

TEST_F(ProgramMenuTest, OpensFromTheTrayIconAndClosesWithEscapeOrAClickElsewhere) {
  ASSERT_TRUE(program().openMenu());
  EXPECT_TRUE(program().leaveMenu());
  ASSERT_TRUE(program().openMenu());
  input().click(300, 600);
  EXPECT_TRUE(waitFor([&] { return !program().menu(); }));
}

TEST_F(ProgramMenuTest, ItsIconComesBackWhenTheTrayIsRestarted) {
  ASSERT_TRUE(waitFor([&] { return program().trayIcon().has_value(); }));
  desktop().stopTray();
  ASSERT_TRUE(waitFor([&] { return !program().trayIcon(); }));
  desktop().startTray();
  EXPECT_TRUE(program().openMenu());
  EXPECT_TRUE(program().leaveMenu());
}

TEST_F(ProgramMenuTest, ThePanelOpensByHotKeyRightAfterTheMenuWasUsed) {
  const TargetProgram other(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(program().openMenu());
  ASSERT_TRUE(program().leaveMenu());
  EXPECT_TRUE(openPanel());
}

}  // namespace
}  // namespace zephyx
