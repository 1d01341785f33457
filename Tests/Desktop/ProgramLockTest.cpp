#include <signal.h>

#include "Tests/Desktop/GrabbingProgram.h"
#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;

/// Cleaning: a terminal and the window manager are the witnesses. Every case ends unlocked.
class ProgramLockTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() { startDesktop({.tray = true}); }
  void SetUp() override {
    ProgramTest::SetUp();
    terminal_ = std::make_unique<TargetProgram>(desktop(), TargetProgram::Kind::Terminal);
    ASSERT_TRUE(waitFor([&] { return !program().mainWindow(); }));
  }
  void TearDown() override {
    terminal_.reset();
    ProgramTest::TearDown();
  }

  void pressKeyboardChord() { input().chord({key::Control, key::Alt, key::Super, key::K}); }
  void pressTrackpadChord() { input().chord({key::Control, key::Alt, key::Super, key::P}); }
  [[nodiscard]] bool waitUntilLocked() {
    return waitFor([&] { return program().notice().has_value(); });
  }
  [[nodiscard]] bool waitUntilUnlocked() {
    return waitFor([&] { return !program().notice(); });
  }
  [[nodiscard]] bool isTyped(const std::string& text) {
    const auto before = terminal_->text();
    input().type(text);
    return terminal_->waitForText(before + text);
  }
  /// Whether another program could have it.
  static bool keyboardIsFree() { return GrabbingProgram().takeKeyboard(); }
  std::uint32_t currentDesktop() {
    const auto number = windows().property32(windows().root(), "_NET_CURRENT_DESKTOP");
    return number.empty() ? 0 : number.front();
  }
  void switchDesktop(key::Code direction) { input().chord({key::Control, key::Alt, direction}); }
  /// Clicks the switch of the menu's row, which is the lowest thing in the accent's colour.
  [[nodiscard]] bool clickSwitch() {
    constexpr std::uint32_t accent = 0x4c8dff;
    const auto menu = program().menu();
    if (!menu) return false;
    const auto pixels = windows().pixels(menu->id, 0, 0, menu->width, menu->height);
    for (std::size_t i = pixels.size(); i-- > 0;) {
      if ((pixels[i] & 0xffffff) != accent) continue;
      const int at = static_cast<int>(i);
      input().click(menu->x + at % menu->width, menu->y + at / menu->width);
      return true;
    }
    return false;
  }

  std::unique_ptr<TargetProgram> terminal_;
};

TEST_F(ProgramLockTest, ALockedKeyboardIsDeadForEverybodyButItsOwnCombination) {
  switchDesktop(key::Right);
  ASSERT_TRUE(waitFor([&] { return currentDesktop() == 1; }));
  switchDesktop(key::Left);
  ASSERT_TRUE(waitFor([&] { return currentDesktop() == 0 && terminal_->isActive(); }));

  // Keys go by their places, whatever locks and layout are.
  desktop().run({"setxkbmap", "ru"});
  input().tap(key::NumLock);
  input().tap(key::CapsLock);
  pressKeyboardChord();
  ASSERT_TRUE(waitUntilLocked());
  input().type("a");
  switchDesktop(key::Right);
  input().chord({key::Alt, key::Tab});
  input().chord({key::Shift, key::Super, key::V});
  input().chord({key::Control, key::Alt, key::Super, key::Shift, key::K});
  pressTrackpadChord();
  EXPECT_TRUE(
      holdsFor([&] { return program().notice() && !program().panel() && currentDesktop() == 0; },
               milliseconds(300)));
  EXPECT_EQ(terminal_->text(), "");
  pressKeyboardChord();
  EXPECT_TRUE(waitUntilUnlocked());
  input().tap(key::CapsLock);
  input().tap(key::NumLock);
  desktop().run({"setxkbmap", "us"});
  EXPECT_TRUE(isTyped("b"));
  switchDesktop(key::Right);
  EXPECT_TRUE(waitFor([&] { return currentDesktop() == 1; }));
  switchDesktop(key::Left);
  EXPECT_TRUE(waitFor([&] { return currentDesktop() == 0; }));
}

TEST_F(ProgramLockTest, AHotkeyThatStaysDownTogglesOnce) {
  desktop().run({"xset", "r", "rate", "100", "50"});
  for (const bool locks : {true, false}) {
    for (const auto code : {key::Control, key::Alt, key::Super, key::K}) input().pressKey(code);
    EXPECT_TRUE(waitFor([&] { return program().notice().has_value() == locks; }));
    EXPECT_TRUE(
        holdsFor([&] { return program().notice().has_value() == locks; }, milliseconds(400)));
    for (const auto code : {key::K, key::Super, key::Alt, key::Control}) input().releaseKey(code);
  }
  EXPECT_TRUE(waitFor([&] { return keyboardIsFree(); }));
  EXPECT_EQ(terminal_->text(), "");
  EXPECT_TRUE(isTyped("a"));
}

TEST_F(ProgramLockTest, ALockedTrackpadClicksNothingWhileKeysAndHotkeysWork) {
  const TargetProgram other(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(terminal_->activate());
  pressTrackpadChord();
  ASSERT_TRUE(waitUntilLocked());
  input().click(other.window().centerX(), other.window().centerY());
  const auto icon = program().trayIcon();
  ASSERT_TRUE(icon);
  input().click(icon->centerX(), icon->centerY());
  pressKeyboardChord();
  EXPECT_TRUE(
      holdsFor([&] { return terminal_->isActive() && !program().menu(); }, milliseconds(300)));
  EXPECT_TRUE(isTyped("a"));
  EXPECT_TRUE(openPanel());
  input().tap(key::Escape);
  EXPECT_TRUE(waitUntilPanelIsGone());
  pressTrackpadChord();
  EXPECT_TRUE(waitUntilUnlocked());
  input().click(other.window().centerX(), other.window().centerY());
  EXPECT_TRUE(waitFor([&] { return other.isActive(); }));
}

TEST_F(ProgramLockTest, TheMenuOpensUnderALockedKeyboardAndItsSwitchUnlocks) {
  pressKeyboardChord();
  ASSERT_TRUE(waitUntilLocked());
  ASSERT_TRUE(program().openMenu());
  input().click(300, 600);
  ASSERT_TRUE(waitFor([&] { return !program().menu() && !keyboardIsFree(); }));
  input().type("a");
  EXPECT_TRUE(holdsFor([&] { return program().notice().has_value(); }, milliseconds(200)));
  EXPECT_EQ(terminal_->text(), "");
  ASSERT_TRUE(program().openMenu());
  ASSERT_TRUE(waitFor([&] { return clickSwitch(); }));
  EXPECT_TRUE(waitFor([&] { return !program().menu(); }));
  EXPECT_TRUE(waitUntilUnlocked());
  ASSERT_TRUE(terminal_->activate());
  EXPECT_TRUE(isTyped("b"));
}

TEST_F(ProgramLockTest, WhereAnotherProgramHasTheMouseNothingIsLockedAndTheUserIsTold) {
  const auto question = [&] {
    return windows().find([](const DesktopWindow& window) {
      return window.viewable && window.title.starts_with("Could not lock input");
    });
  };
  {
    GrabbingProgram other;
    ASSERT_TRUE(other.takePointer());
    pressTrackpadChord();
    EXPECT_TRUE(waitFor([&] { return !program().notice() && question(); }));
  }
  ASSERT_TRUE(waitFor([&] { return windows().active() == question()->id; }));
  input().tap(key::Return);
  EXPECT_TRUE(waitFor([&] { return !question(); }));
  EXPECT_FALSE(program().notice());
  pressTrackpadChord();
  EXPECT_TRUE(waitUntilLocked());
  pressTrackpadChord();
  EXPECT_TRUE(waitUntilUnlocked());
}

TEST_F(ProgramLockTest, InputIsFreeWhenTheProgramIsKilledOrAskedToEnd) {
  for (const int signal : {SIGKILL, SIGTERM}) {
    pressKeyboardChord();
    ASSERT_TRUE(waitUntilLocked());
    program().process().signal(signal);
    ASSERT_TRUE(program().process().waitForExit());
    EXPECT_TRUE(isTyped("a"));
    startProgram();
    ASSERT_TRUE(terminal_->activate());
  }
}

}  // namespace
}  // namespace zephyx
