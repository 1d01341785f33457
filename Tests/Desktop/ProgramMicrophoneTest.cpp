#include <gtest/gtest.h>

#include <algorithm>

#include "Tests/Desktop/PulseServer.h"
#include "Tests/Desktop/TargetProgram.h"
#include "Tests/Desktop/ZephyxProcess.h"

namespace zephyx {
namespace {

/// The microphone switch of the whole program, with a sound server and another program in front.
class ProgramMicrophoneTest : public testing::Test {
 protected:
  void SetUp() override {
    ASSERT_TRUE(program_.waitUntilReady());
    ASSERT_TRUE(waitFor([&] { return program_.trayIcon() && server_.hasClient("Zephyx"); }));
    iconOfOpenMicrophone_ = picture();
  }
  void TearDown() override {
    if (HasFailure()) ADD_FAILURE() << "The program's log:\n" << program_.log();
  }
  void pressHotkey() { desktop_.input().chord({key::Control, key::Alt, key::Super, key::M}); }
  /// What the icon looks like.
  std::string picture() {
    const auto icon = program_.trayIcon();
    if (!icon) return {};
    return desktop_.run({"import", "-window", std::to_string(icon->id), "-depth", "8", "rgb:-"})
        .output;
  }
  bool iconShows(bool muted) {
    return waitFor([&] {
      const auto shown = picture();
      return !shown.empty() && (shown != iconOfOpenMicrophone_) == muted;
    });
  }
  bool panelIsShown() {
    const auto all = desktop_.windows().viewable();
    return std::any_of(all.begin(), all.end(), [&](const DesktopWindow& window) {
      return window.pid == program_.pid() && window.height == 120;
    });
  }

  VirtualDesktop desktop_{{.compositor = true, .tray = true}};
  PulseServer server_{desktop_};
  ZephyxProcess program_{desktop_};
  std::string iconOfOpenMicrophone_;
};

TEST_F(ProgramMicrophoneTest, TheHotkeySwitchesItAndTheUserSeesThatAndGoesOnTyping) {
  const TargetProgram target(desktop_, TargetProgram::Kind::Qt);
  for (const bool muted : {true, false}) {
    pressHotkey();
    EXPECT_TRUE(waitFor([&] { return server_.isMuted("mic0") == muted; }));
    EXPECT_FALSE(server_.isMuted("mic1"));
    EXPECT_TRUE(waitFor([&] { return panelIsShown(); }));
    EXPECT_TRUE(target.isActive());
    EXPECT_TRUE(iconShows(muted));
    EXPECT_TRUE(waitFor([&] { return !panelIsShown(); }));
  }
  desktop_.input().type("typed");
  EXPECT_TRUE(target.waitForText("typed"));
}

TEST_F(ProgramMicrophoneTest, WhatOtherProgramsDoIsShownWithoutAPanelAndTheMenuUndoesIt) {
  server_.setMute("mic0", true);
  EXPECT_TRUE(iconShows(true));
  EXPECT_FALSE(panelIsShown());
  server_.makeDefault("mic1");
  EXPECT_TRUE(iconShows(false));
  server_.setMute("mic1", true);
  EXPECT_TRUE(iconShows(true));

  const auto icon = *program_.trayIcon();
  desktop_.input().click(icon.centerX(), icon.centerY());
  ASSERT_TRUE(waitFor([&] { return program_.menu().has_value(); }));
  // From the bottom: Quit, Settings, Import, Export, Show, Mute. Disabled rows are passed over.
  for (int row = 0; row < 6; ++row) desktop_.input().tap(key::Up);
  desktop_.input().tap(key::Return);
  EXPECT_TRUE(waitFor([&] { return !server_.isMuted("mic1"); }));
  EXPECT_TRUE(server_.isMuted("mic0"));
  EXPECT_TRUE(waitFor([&] { return panelIsShown(); }));
  EXPECT_TRUE(iconShows(false));
}

}  // namespace
}  // namespace zephyx
