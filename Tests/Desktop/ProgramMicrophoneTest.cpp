#include <algorithm>

#include "Tests/Desktop/ProgramTest.h"
#include "Tests/Desktop/PulseServer.h"

namespace zephyx {
namespace {

/// The microphone switch of the whole program, with a sound server and another program in front.
class ProgramMicrophoneTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() { startDesktop({.compositor = true, .tray = true}); }

  void SetUp() override {
    ProgramTest::SetUp();
    ASSERT_TRUE(waitFor([&] { return program().trayIcon().has_value(); }));
    server_.emplace(desktop());
    // The program was there before. Who looks at the row makes it look, too.
    ASSERT_TRUE(program().openMenu());
    EXPECT_TRUE(waitFor([&] { return server_->hasClient("Zephyx"); }, std::chrono::seconds(2)));
    ASSERT_TRUE(program().leaveMenu());
    iconOfOpenMicrophone_ = picture();
  }
  void pressHotkey() { input().chord({key::Control, key::Alt, key::Super, key::M}); }
  /// What the icon looks like.
  std::string picture() {
    const auto icon = program().trayIcon();
    if (!icon) return {};
    return desktop()
        .run({"import", "-window", std::to_string(icon->id), "-depth", "8", "rgb:-"})
        .output;
  }
  bool iconShows(bool muted) {
    return waitFor([&] {
      const auto shown = picture();
      return !shown.empty() && (shown != iconOfOpenMicrophone_) == muted;
    });
  }
  bool panelIsShown() {
    return std::ranges::any_of(windows().viewable(), [&](const DesktopWindow& window) {
      return window.pid == program().pid() && window.height == 120;
    });
  }

  std::optional<PulseServer> server_;
  std::string iconOfOpenMicrophone_;
};

TEST_F(ProgramMicrophoneTest, TheHotkeySwitchesItAndTheUserSeesThatAndGoesOnTyping) {
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  for (const bool muted : {true, false}) {
    pressHotkey();
    EXPECT_TRUE(waitFor([&] { return server_->isMuted("mic0") == muted; }));
    EXPECT_FALSE(server_->isMuted("mic1"));
    EXPECT_TRUE(waitFor([&] { return panelIsShown(); }));
    EXPECT_TRUE(target.isActive());
    EXPECT_TRUE(iconShows(muted));
    EXPECT_TRUE(waitFor([&] { return !panelIsShown(); }));
  }
  input().type("typed");
  EXPECT_TRUE(target.waitForText("typed"));
}

TEST_F(ProgramMicrophoneTest, WhatOtherProgramsDoIsShownWithoutAPanelAndTheMenuUndoesIt) {
  server_->setMute("mic0", true);
  EXPECT_TRUE(iconShows(true));
  EXPECT_FALSE(panelIsShown());
  server_->makeDefault("mic1");
  EXPECT_TRUE(iconShows(false));
  server_->setMute("mic1", true);
  EXPECT_TRUE(iconShows(true));

  ASSERT_TRUE(program().chooseRow(ZephyxProcess::muteRow));
  EXPECT_TRUE(waitFor([&] { return !server_->isMuted("mic1"); }));
  EXPECT_TRUE(server_->isMuted("mic0"));
  EXPECT_TRUE(waitFor([&] { return panelIsShown(); }));
  EXPECT_TRUE(iconShows(false));
}

}  // namespace
}  // namespace zephyx
