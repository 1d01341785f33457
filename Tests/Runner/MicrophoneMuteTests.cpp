#include "Platform/Label.h"
#include "Platform/SymbolImage.h"
#include "Runner/MicrophoneMuteController.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

constexpr AudioDeviceId builtIn = 41;
constexpr AudioDeviceId headset = 73;

class MicrophoneMuteTest : public HostTest {
 protected:
  SimulatedAudioHardware& audio() { return desktop.audioHardware; }

  void toggle() {
    ignoreLog("[MicMute] hotkey (id=10) fired — toggle mic mute");
    pressHotkey(HotkeyID::micMute);
  }
  void expectShown(bool muted) {
    desktop.dispatch.settle();
    EXPECT_EQ(row("toggleMicMute").properties().isOn, muted);
    EXPECT_EQ(statusItem().symbol(), muted ? "mic.slash.fill" : "note.text");
    EXPECT_EQ(statusItem().accessibilityDescription(),
              muted ? "Zephyx — microphone muted" : "Zephyx");
  }
  /// What the "mic_toggled" events since the last call said.
  std::vector<std::string> takeToggles() {
    std::vector<std::string> toggles;
    for (const auto& call : mainScreen().takeCalls()) {
      if (call.method != "telemetryEvent") continue;
      const auto& event = *call.arguments.asMap();
      EXPECT_EQ(*event.find("name"), Value("mic_toggled"));
      toggles.push_back(*event.find("props")->asMap()->find("muted")->asString());
    }
    return toggles;
  }
  /// The panels on the screen.
  std::vector<std::shared_ptr<SimulatedWindow>> panels() {
    std::vector<std::shared_ptr<SimulatedWindow>> shown;
    for (const auto& window : desktop.application.simulatedWindows()) {
      if (window->isVisible() && window->frame().size.height == 120) shown.push_back(window);
    }
    return shown;
  }
  /// Symbol and text on a panel.
  static std::vector<std::string> words(const SimulatedWindow& panel) {
    std::vector<std::string> found;
    for (const auto& view : panel.contentView()->children().at(0)->children()) {
      if (const auto* symbol = dynamic_cast<const SymbolImage*>(view.get())) {
        found.push_back(symbol->symbol().name);
      } else if (const auto* label = dynamic_cast<const Label*>(view.get())) {
        found.push_back(label->text());
      }
    }
    return found;
  }
};

TEST_F(MicrophoneMuteTest, TheSwitchIsTurnedByHotkeyAndRowAndShownInMenuAndMenuBar) {
  audio().plugIn(builtIn, {.mute = false, .volume = 0.6F});
  launch();
  expectShown(false);

  toggle();
  EXPECT_EQ(audio().microphone(builtIn).mute, true);
  EXPECT_EQ(audio().microphone(builtIn).volume, 0.6F);
  expectShown(true);
  statusItem().openMenu();
  ASSERT_TRUE(statusItem().choose("toggleMicMute"));
  EXPECT_EQ(audio().microphone(builtIn).mute, false);
  expectShown(false);
  EXPECT_THAT(takeToggles(), ElementsAre("true", "false"));
}

TEST_F(MicrophoneMuteTest, WithoutASwitchTheVolumeIsTakenDownAndGivenBack) {
  launch();
  for (const bool isReadable : {true, false}) {
    audio().plugIn(builtIn, {.volume = 0.6F, .volumeIsReadable = isReadable});
    toggle();
    EXPECT_EQ(audio().microphone(builtIn).volume, 0.0F);
    audio().plugIn(builtIn, {.volume = 0.0F});
    expectShown(true);
    toggle();
    EXPECT_EQ(audio().microphone(builtIn).volume, isReadable ? 0.6F : 1.0F);
    expectShown(false);
  }
  audio().plugIn(builtIn, {.volume = 0.00005F});
  expectShown(true);
  MicrophoneMuteController::shared().setMuted(true);
  MicrophoneMuteController::shared().setMuted(false);
  EXPECT_EQ(audio().microphone(builtIn).volume, 1.0F) << "unmuting never restores silence";
}

TEST_F(MicrophoneMuteTest, ASwitchThatCannotBeReadIsJudgedByTheVolume) {
  audio().plugIn(builtIn, {.mute = false, .muteIsReadable = false, .volume = 0.0F});
  launch();
  expectShown(true);
  audio().plugIn(builtIn, {.mute = true, .muteIsReadable = false, .volume = 0.5F});
  expectShown(false);
  audio().plugIn(builtIn, {.mute = true, .muteIsReadable = false, .volumeIsReadable = false});
  expectShown(false);
}

TEST_F(MicrophoneMuteTest, TwoTogglesLeaveOnePanelForItsTimeAfterTheSecond) {
  audio().plugIn(builtIn, {.mute = false});
  launch();
  toggle();
  ASSERT_EQ(panels().size(), 1u);
  EXPECT_THAT(words(*panels().front()), ElementsAre("mic.slash.fill", "Microphone muted"));
  const auto configuration = panels().front()->configuration();
  EXPECT_TRUE(configuration.ignoresMouseEvents);
  EXPECT_FALSE(configuration.canBecomeKey);
  EXPECT_EQ(panels().front()->contentView()->alpha(), 1);
  desktop.dispatch.advance(0.8);
  toggle();
  ASSERT_EQ(panels().size(), 1u);
  EXPECT_THAT(words(*panels().front()), ElementsAre("mic.fill", "Microphone on"));
  desktop.dispatch.advance(1.15);
  ASSERT_EQ(panels().size(), 1u);
  EXPECT_EQ(panels().front()->contentView()->alpha(), 1);
  desktop.dispatch.advance(0.06);
  EXPECT_EQ(panels().front()->contentView()->alpha(), 0);
  desktop.dispatch.advance(0.5);
  EXPECT_THAT(panels(), IsEmpty());
}

TEST_F(MicrophoneMuteTest, WithoutAMicrophoneNothingHappens) {
  launch();
  toggle();
  EXPECT_THAT(panels(), IsEmpty());
  expectShown(false);
  EXPECT_THAT(takeToggles(), ElementsAre("false"));
  EXPECT_FALSE(row("toggleMicMute").properties().isEnabled);
  EXPECT_EQ(row("toggleMicMute").properties().toolTip, "No microphone was found.");
  audio().plugIn(builtIn, {.mute = false});
  desktop.dispatch.settle();
  EXPECT_TRUE(row("toggleMicMute").properties().isEnabled);
  EXPECT_EQ(row("toggleMicMute").properties().toolTip, "");
}

TEST_F(MicrophoneMuteTest, WhatFailsIsSeenInTheStateThatIsReadBack) {
  audio().plugIn(builtIn, {.mute = false, .writeStatus = -50});
  launch();
  toggle();
  EXPECT_THAT(takeLog(), Contains("[MicMute] setMute(true) falló (OSStatus=-50)"));
  EXPECT_EQ(panels().size(), 1u);
  expectShown(false);
  audio().plugIn(builtIn, {.volume = 0.7F, .writeStatus = -50});
  toggle();
  audio().plugIn(builtIn, {});  // neither switch nor volume
  toggle();
  EXPECT_THAT(words(*panels().front()), ElementsAre("mic.slash.fill", "Microphone muted"));
  expectShown(false);
  EXPECT_THAT(takeToggles(), ElementsAre("false", "false", "false"));
}

TEST_F(MicrophoneMuteTest, ChangesByOthersAreShownWithoutAPanel) {
  audio().plugIn(builtIn, {.mute = false});
  audio().plugIn(headset, {.mute = true});
  launch();
  expectShown(false);
  audio().makeDefault(headset);
  expectShown(true);
  audio().plugIn(headset, {.mute = false});
  expectShown(false);
  audio().makeDefault(builtIn);
  audio().plugIn(builtIn, {.mute = true});
  expectShown(true);
  audio().pullOut(builtIn);
  expectShown(false);
  EXPECT_THAT(panels(), IsEmpty());
  EXPECT_THAT(takeToggles(), IsEmpty());
  endHost();
  EXPECT_FALSE(audio().isObserved());
}

}  // namespace
}  // namespace zephyx
