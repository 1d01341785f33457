#include <sqlite3.h>

#include <csignal>

#include "Tests/Desktop/FullDisk.h"
#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// What the program lives on goes, and mostly comes back. It runs through all cases.
class ProgramFaultsTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() {
    desktop_ = std::make_unique<VirtualDesktop>(
        VirtualDesktopOptions{.compositor = true, .tray = true, .sessionBus = true});
    desktop_->enter();
    program_ = std::make_unique<ZephyxProcess>(
        *desktop_, Environment{}, std::vector<std::string>{"env", "--ignore-signal=XFSZ"});
    ASSERT_TRUE(program_->waitUntilReady()) << program_->log();
  }
  /// The whole way from a copy to a paste into `target`.
  [[nodiscard]] bool works(const TargetProgram& target, const std::string& text) {
    desktop().copy(text);
    if (!program().waitForEntry(text) || !target.activate()) return false;
    input().chord({key::Control, key::A});
    if (!openPanel()) return false;
    input().tap(key::Return);
    return target.waitForText(text) && waitUntilPanelIsGone();
  }
};

TEST_F(ProgramFaultsTest, TheWindowManagerAndTheCompositorMayGoAndComeBack) {
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  desktop().stopCompositor();
  EXPECT_TRUE(works(target, "without compositor"));
  desktop().stopWindowManager();
  desktop().copy("without window manager");
  EXPECT_TRUE(program().waitForEntry("without window manager"));
  const auto hasKeyboard = [&] {
    return windows().processOf(windows().focused()) == program().pid();
  };
  input().chord({key::Shift, key::Super, key::V});
  EXPECT_TRUE(waitFor(hasKeyboard));
  input().tap(key::Escape);
  EXPECT_TRUE(waitFor([&] { return !hasKeyboard(); }));
  desktop().startWindowManager();
  ASSERT_TRUE(waitFor([&] { return !windows().managed().empty(); }));
  desktop().startCompositor();
  EXPECT_TRUE(works(target, "with both again"));
}

TEST_F(ProgramFaultsTest, TheSessionBusMayGoAndComeBack) {
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  desktop().stopSessionBus();
  EXPECT_TRUE(works(target, "without bus"));
  EXPECT_TRUE(program().openMenu());
  EXPECT_TRUE(program().leaveMenu());
  desktop().startSessionBus();
  EXPECT_TRUE(works(target, "with a bus again"));
}

TEST_F(ProgramFaultsTest, AfterALongSleepItGoesOnAtOnce) {
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(program().openMenu());  // its rings move every second
  program().process().signal(SIGSTOP);
  desktop().copy("copied meanwhile");
  pass(seconds(4));
  program().process().signal(SIGCONT);
  EXPECT_TRUE(program().waitForEntry("copied meanwhile"));
  EXPECT_TRUE(program().leaveMenu());
  EXPECT_TRUE(works(target, "after the sleep"));
  EXPECT_EQ(newEntries().size(), 2u);
}

TEST_F(ProgramFaultsTest, AFullDiskCostsWhatIsCopiedMeanwhileAndNothingElse) {
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(works(target, "before"));
  {
    const FullDisk full(program().pid());
    desktop().copy("no room for it");
    desktop().run(
        {"convert", "-size", "300x300", "plasma:", (desktop().home() / "p.png").string()});
    desktop().copy(readFile(desktop().home() / "p.png"), "image/png");
    ASSERT_TRUE(openPanel());
    input().tap(key::Return);  // what was there can still be pasted
    EXPECT_TRUE(waitUntilPanelIsGone());
    EXPECT_EQ(desktop().pasted(), "before");
  }
  EXPECT_TRUE(works(target, "after"));
  EXPECT_EQ(newEntries().size(), 2u);
  std::size_t images = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(program().dataFolder()))
    images += entry.path().extension() == ".png" &&
              entry.path().string().find("icons") == std::string::npos;
  EXPECT_EQ(images, 0u);
}

TEST_F(ProgramFaultsTest, AHistoryThatAnotherProgramHoldsIsWaitedForAndNotLost) {
  sqlite3* other = nullptr;
  ASSERT_EQ(sqlite3_open(program().historyFile().c_str(), &other), SQLITE_OK);
  ASSERT_EQ(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
  desktop().copy("while it is held");
  EXPECT_TRUE(openPanel());
  sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
  sqlite3_close(other);
  EXPECT_TRUE(program().waitForEntry("while it is held"));
}

TEST_F(ProgramFaultsTest, KilledInTheMiddleOfAPasteItLeavesNoKeyDown) {
  auto& keys = input();
  for (const int signal : {SIGKILL, SIGTERM}) {
    for (const int moment : {0, 20, 150, 260}) {
      const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
      desktop().copy("text");
      for (const auto code : {key::Shift, key::Super, key::V}) keys.pressKey(code);
      ASSERT_TRUE(waitFor([&] { return panelHasKeyboard(); }));
      keys.tap(key::Return);
      pass(milliseconds(moment));
      program().process().signal(signal);
      ASSERT_TRUE(program().process().waitForExit());
      for (const auto code : {key::V, key::Super, key::Shift}) keys.releaseKey(code);
      EXPECT_TRUE(keys.pressedKeys().empty()) << signal << " after " << moment << " ms";
      ASSERT_TRUE(target.activate());
      keys.chord({key::Control, key::A});
      keys.type("x");
      EXPECT_TRUE(target.waitForText("x")) << target.text();
      startProgram();
    }
  }
}

/// The end of everything.
TEST(ProgramServerTest, WithoutItsServerItEndsWithAMessageAndTheHistoryIsWhole) {
  VirtualDesktop desktop({.tray = true, .sessionBus = true});
  ZephyxProcess program(desktop);
  ASSERT_TRUE(program.waitUntilReady());
  for (int copy = 0; copy < 20; ++copy) desktop.copy("copy " + std::to_string(copy));
  ASSERT_TRUE(program.waitForEntry("copy 19"));
  desktop.killServer();
  const auto status = program.process().waitForExit();
  ASSERT_TRUE(status);
  EXPECT_GT(*status, 0) << "not by a signal";
  EXPECT_GT(program.logCount("X11 server"), 0u) << program.log();
  EXPECT_EQ(program.history().rows().back().text, "copy 19");
}

}  // namespace
}  // namespace zephyx
