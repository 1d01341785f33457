#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

class ProgramMenuTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() {
    VirtualDesktopOptions options;
    options.tray = true;
    startDesktop(options);
  }
  [[nodiscard]] bool openMenu() {
    return waitFor([&] {
      const auto icon = program().trayIcon();
      if (!icon) return false;
      input().click(icon->centerX(), icon->centerY());
      return waitFor([&] { return program().menu().has_value(); }, std::chrono::seconds(1));
    });
  }
  [[nodiscard]] bool waitUntilMenuIsGone() {
    return waitFor([&] { return !program().menu(); });
  }
};

TEST_F(ProgramMenuTest, OpensFromTheTrayIconAndClosesWithEscapeOrAClickElsewhere) {
  ASSERT_TRUE(openMenu());
  EXPECT_GT(windows().distinctColors(*program().menu()), 8);
  input().tap(key::Escape);
  EXPECT_TRUE(waitUntilMenuIsGone());
  ASSERT_TRUE(openMenu());
  input().click(300, 600);
  EXPECT_TRUE(waitUntilMenuIsGone());
}

TEST_F(ProgramMenuTest, ARowShowsTheMainWindow) {
  const TargetProgram other(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(waitFor([&] { return !program().mainWindow(); }));
  ASSERT_TRUE(openMenu());
  // From the bottom: Quit, Settings, Import, Export, Show. A row that is disabled is passed over.
  for (int row = 0; row < 5; ++row) input().tap(key::Up);
  input().tap(key::Return);
  EXPECT_TRUE(waitFor([&] { return program().mainWindow().has_value(); }));
  EXPECT_TRUE(waitUntilMenuIsGone());
}

TEST_F(ProgramMenuTest, ItsIconComesBackWhenTheTrayIsRestarted) {
  ASSERT_TRUE(waitFor([&] { return program().trayIcon().has_value(); }));
  desktop().stopTray();
  ASSERT_TRUE(waitFor([&] { return !program().trayIcon(); }));
  desktop().startTray();
  EXPECT_TRUE(openMenu());
  input().tap(key::Escape);
  EXPECT_TRUE(waitUntilMenuIsGone());
}

TEST_F(ProgramMenuTest, ThePanelOpensByHotKeyRightAfterTheMenuWasUsed) {
  const TargetProgram other(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(openMenu());
  input().tap(key::Escape);
  ASSERT_TRUE(waitUntilMenuIsGone());
  EXPECT_TRUE(openPanel());
}

}  // namespace
}  // namespace zephyx
