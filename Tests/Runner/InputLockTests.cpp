#include "Platform/Label.h"
#include "Runner/HotkeyManager.h"
#include "Runner/InputLockController.h"
#include "Runner/InputLockMenuItemView.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

constexpr std::uint16_t keyA = 0;
constexpr std::uint16_t keyK = 40;
constexpr std::uint16_t keyU = 32;
constexpr std::uint64_t capsLock = 0x10000;
constexpr auto lockModifiers =
    eventModifier::control | eventModifier::option | eventModifier::command;
constexpr const char* keyboardNotice =
    "Keyboard locked for cleaning — press ⌃⌥⌘K or click the Zephyx menu bar icon to unlock";
constexpr const char* trackpadNotice = "Trackpad locked for cleaning — press ⌃⌥⌘P to unlock";

class InputLockTest : public HostTest {
 protected:
  void SetUp() override {
    ignoreLog("[InputLock] hotkey");
    launch();
  }

  void press(std::uint16_t key, std::uint64_t flags) {
    desktop.keyboard.press(key, flags);
    desktop.dispatch.settle();
  }
  /// What the panel on the screen says; empty when there is none.
  std::string notice() {
    for (const auto& window : desktop.application.simulatedWindows()) {
      if (!window->isVisible() || !window->contentView()) continue;
      const auto content = window->contentView()->children().at(0);
      const auto label = std::dynamic_pointer_cast<Label>(content->children().at(0));
      if (!label) continue;
      const auto text = desktop.textMetrics.size(label->text(), {13, FontWeight::semibold});
      EXPECT_EQ(window->frame().size, (Size{text.width + 40, text.height + 24}));
      return label->text();
    }
    return "";
  }
  InputLockMenuItemView& keyboardRow() {
    for (const auto& item : statusItem().menu()->items()) {
      if (auto* view = dynamic_cast<InputLockMenuItemView*>(item->view().get())) return *view;
    }
    throw std::out_of_range("no row");
  }
  std::string trackpadRow() { return row("toggleTrackpadLock").properties().title; }
  void toggleRow() {
    statusItem().openMenu();
    keyboardRow().toggle()->toggle();
  }
  void chooseTrackpad() {
    statusItem().openMenu();
    EXPECT_TRUE(statusItem().choose("toggleTrackpadLock"));
    desktop.dispatch.settle();
  }
  bool keysAreTaken() { return desktop.eventTaps.takes(EventType::keyDown); }
  bool mouseIsTaken() { return desktop.eventTaps.takes(EventType::leftMouseDown); }
  void expectUnlocked() {
    EXPECT_FALSE(desktop.eventTaps.isThere());
    EXPECT_EQ(notice(), "");
    EXPECT_FALSE(keyboardRow().toggle()->isOn());
    EXPECT_EQ(keyboardRow().subtitle(), "⌃⌥⌘K");
    EXPECT_EQ(trackpadRow(), "Lock Trackpad for Cleaning");
  }
  /// The user presses the only button of the question that a lock could not be had.
  void dismissFailure() {
    ASSERT_EQ(desktop.alerts.shown().value_or(Alert{}).message, "Could not lock input");
    desktop.alerts.press(0);
    desktop.dispatch.settle();
  }
};

TEST_F(InputLockTest, TakesOutEveryKindOfEventOfItsTarget) {
  EXPECT_EQ(InputLockController::eventMask(InputLockTarget::keyboard), 0x5C00u);
  EXPECT_EQ(InputLockController::eventMask(InputLockTarget::trackpad), 0x0E4000FEu);
}

TEST_F(InputLockTest, ALockedKeyboardOpensOnlyWithExactlyItsOwnCombination) {
  const std::tuple<std::uint16_t, std::uint64_t, bool> cases[] = {
      {keyK, lockModifiers, true},
      {keyK, lockModifiers | capsLock, true},
      {keyK, lockModifiers | eventModifier::shift, false},
      {keyK, lockModifiers & ~eventModifier::option, false},
      {keyK, 0, false},
      {keyA, lockModifiers, false},
  };
  for (const auto& [key, flags, unlocks] : cases) {
    SCOPED_TRACE(testing::Message() << key << ", " << flags);
    switchToEditor();
    pressHotkey(HotkeyID::keyboardLock);
    EXPECT_TRUE(keysAreTaken());
    EXPECT_FALSE(mouseIsTaken());
    EXPECT_EQ(notice(), keyboardNotice);
    EXPECT_TRUE(keyboardRow().toggle()->isOn());
    EXPECT_EQ(keyboardRow().subtitle(), "Locked — press ⌃⌥⌘K or turn off here");
    press(keyA, 0);
    press(key, flags);
    EXPECT_EQ(keysAreTaken(), !unlocks);
    if (!unlocks) press(keyK, lockModifiers);
    expectUnlocked();
  }
  EXPECT_EQ(editor->text, "");
  press(keyA, 0);
  EXPECT_EQ(editor->text, "a");
}

TEST_F(InputLockTest, AChangedHotkeyIsTheOneThatUnlocksAndThatTheUserIsTold) {
  constexpr auto changed = eventModifier::control | eventModifier::shift | eventModifier::command;
  HotkeyManager::shared().set(HotkeyID::keyboardLock, {keyU, 0x1300}, desktop.userDefaults);
  press(keyU, changed);
  EXPECT_THAT(notice(), HasSubstr("press ⌃⇧⌘U or click"));
  desktop.keyboard.repeat(keyU, changed);
  desktop.dispatch.settle();
  EXPECT_TRUE(keysAreTaken()) << "it only stays down";
  press(keyK, lockModifiers);
  EXPECT_TRUE(keysAreTaken());
  press(keyU, changed);
  EXPECT_FALSE(keysAreTaken());
  EXPECT_EQ(keyboardRow().subtitle(), "⌃⇧⌘U");
}

TEST_F(InputLockTest, ALockedTrackpadLeavesTheKeyboardAndItsHotkey) {
  switchToEditor();
  pressHotkey(HotkeyID::trackpadLock);
  EXPECT_TRUE(mouseIsTaken());
  EXPECT_EQ(notice(), trackpadNotice);
  EXPECT_EQ(trackpadRow(), "Trackpad locked — press ⌃⌥⌘P to unlock");
  press(keyA, 0);
  EXPECT_EQ(editor->text, "a");
  pressHotkey(HotkeyID::keyboardLock);
  EXPECT_FALSE(keysAreTaken());
  EXPECT_EQ(notice(), trackpadNotice);
  pressHotkey(HotkeyID::trackpadLock);
  expectUnlocked();
}

TEST_F(InputLockTest, TheMenuLocksAndUnlocksAndClosesForIt) {
  toggleRow();
  EXPECT_FALSE(statusItem().menuIsOpen());
  EXPECT_FALSE(keysAreTaken());
  desktop.dispatch.settle();
  EXPECT_TRUE(keysAreTaken());
  chooseTrackpad();
  EXPECT_TRUE(keysAreTaken());
  EXPECT_FALSE(mouseIsTaken());
  toggleRow();
  desktop.dispatch.settle();
  expectUnlocked();
  chooseTrackpad();
  EXPECT_TRUE(mouseIsTaken());
}

TEST_F(InputLockTest, WithoutPermissionTheUserIsToldWhereToGiveIt) {
  desktop.accessibility.setTrusted(false);
  toggleRow();
  desktop.dispatch.settle();
  EXPECT_EQ(desktop.alerts.shown().value_or(Alert{}).message, "Accessibility permission needed");
  EXPECT_EQ(desktop.accessibility.promptCount(), 1);
  expectUnlocked();
  desktop.alerts.press(1);
  desktop.dispatch.settle();
  EXPECT_THAT(desktop.workspace.openedUrls(), IsEmpty());
  pressHotkey(HotkeyID::trackpadLock);
  desktop.alerts.press(0);
  desktop.dispatch.settle();
  EXPECT_THAT(
      desktop.workspace.openedUrls(),
      ElementsAre("x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility"));

  // Where nobody can give it, the user is not sent to look for it.
  desktop.accessibility.setObstacle("There is no way here.");
  pressHotkey(HotkeyID::trackpadLock);
  EXPECT_EQ(desktop.alerts.shown().value_or(Alert{}).informativeText, "There is no way here.");
  dismissFailure();
  expectUnlocked();
}

TEST_F(InputLockTest, ADeviceThatIsBusyIsWaitedForAndARefusedOneIsReportedAtOnce) {
  desktop.eventTaps.setBusy(true);
  pressHotkey(HotkeyID::trackpadLock);
  desktop.dispatch.advance(1);
  EXPECT_EQ(notice(), "");
  desktop.eventTaps.setBusy(false);
  desktop.dispatch.advance(0.06);
  EXPECT_TRUE(mouseIsTaken());
  EXPECT_EQ(notice(), trackpadNotice);
  pressHotkey(HotkeyID::trackpadLock);

  desktop.eventTaps.setBusy(true);
  pressHotkey(HotkeyID::trackpadLock);
  desktop.dispatch.advance(0.5);
  pressHotkey(HotkeyID::trackpadLock);
  desktop.dispatch.advance(3);
  EXPECT_FALSE(desktop.alerts.shown()) << "the user has called it off";

  pressHotkey(HotkeyID::trackpadLock);
  desktop.dispatch.advance(1.9);
  EXPECT_FALSE(desktop.alerts.shown());
  desktop.dispatch.advance(0.2);
  EXPECT_THAT(desktop.alerts.shown().value_or(Alert{}).informativeText,
              StartsWith("Another program"));
  dismissFailure();
  desktop.eventTaps.refuse();
  pressHotkey(HotkeyID::keyboardLock);
  dismissFailure();
  expectUnlocked();
}

TEST_F(InputLockTest, ADisabledTapIsEnabledAgainAndOneThatCannotBeIsNoLock) {
  auto& taps = desktop.eventTaps;
  for (const auto reason : {EventType::tapDisabledByTimeout, EventType::tapDisabledByUserInput}) {
    taps.setBusy(false);
    pressHotkey(HotkeyID::keyboardLock);
    taps.disable(reason);
    EXPECT_TRUE(keysAreTaken());
    taps.setBusy(true);
    taps.disable(reason);
    desktop.dispatch.advance(1);
    taps.setBusy(false);
    desktop.dispatch.advance(0.06);
    EXPECT_TRUE(keysAreTaken());
    taps.setBusy(true);
    taps.disable(reason);
    desktop.dispatch.advance(1.9);
    EXPECT_EQ(notice(), keyboardNotice);
    desktop.dispatch.advance(0.2);
    expectUnlocked();
  }
  taps.setBusy(false);
  pressHotkey(HotkeyID::trackpadLock);
  taps.invalidate();
  desktop.dispatch.settle();
  expectUnlocked();
}

}  // namespace
}  // namespace zephyx
