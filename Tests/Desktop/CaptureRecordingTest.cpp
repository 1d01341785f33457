#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>

#include "Platform/Application.h"
#include "Platform/Events.h"
#include "Platform/HotKeys.h"
#include "Platform/Linux/Input/KeyCodes.h"
#include "Platform/NotificationCenter.h"
#include "Runner/HotkeyManager.h"
#include "Tests/Desktop/CaptureTest.h"
#include "Tests/Desktop/GrabbingProgram.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;
using Keys = std::vector<std::uint8_t>;

constexpr std::uint32_t macKeyD = 2;
constexpr std::uint32_t macKeyP = 35;
constexpr std::uint16_t controlAlt = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_1;

/// Counts the keys, and the questions whether a key is a shortcut, that reach what the host's
/// windows hold.
class PassedKeys : public QObject {
 public:
  PassedKeys() { qGuiApp->installEventFilter(this); }
  int count = 0;

 private:
  bool eventFilter(QObject*, QEvent* event) override {
    const bool isKey =
        event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride;
    if (isKey && static_cast<QKeyEvent*>(event)->key() < Qt::Key_Shift) ++count;
    return false;
  }
};

/// Another program that holds Control+Alt+P.
class OtherProgram : public GrabbingProgram {
 public:
  OtherProgram() {
    xcb_grab_key(x11_.get(), 0, x11_.root(), controlAlt, key::P, XCB_GRAB_MODE_ASYNC,
                 XCB_GRAB_MODE_ASYNC);
    waitForServer();
  }
  int presses() {
    while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(x11_.get())}) {
      if ((event->response_type & 0x7f) == XCB_KEY_PRESS) ++presses_;
    }
    return presses_;
  }

 private:
  int presses_ = 0;
};

class CaptureRecordingTest : public CaptureTest {
 protected:
  void SetUp() override {
    CaptureTest::SetUp();
    window_ = platform().application().makeWindow({.contentRect = {{100, 100}, {400, 300}}});
    show();
    losses_ = platform().defaultNotificationCenter().addObserver(
        notification::windowDidResignKey, window_->notificationObject(), [this] { ++timesLost_; });
  }
  void TearDown() override {
    losses_.reset();
    window_.reset();
    CaptureTest::TearDown();
  }

  static HotkeyManager& hotkeys() { return HotkeyManager::shared(); }
  void show() {
    window_->makeKeyAndOrderFront();
    ASSERT_TRUE(runUntil([&] { return window_->isKeyWindow(); }));
    ASSERT_TRUE(runUntil([] { return QGuiApplication::focusWindow() != nullptr; }));
  }
  void record(double timeout = 6) {
    hotkeys().startRecording(
        timeout, [this](const HotkeyRecordingResult& result) { results_.push_back(result); });
  }
  bool isDesktopShown() {
    const auto& windows = desktop().windows();
    return windows.property32(windows.root(), "_NET_SHOWING_DESKTOP") ==
           std::vector<std::uint32_t>{1};
  }
  static bool isKeyboardFree(OtherProgram& other) {
    const bool isFree = other.takeKeyboard();
    if (isFree) other.giveKeyboardBack();
    return isFree;
  }
  void press(const Keys& keys) {
    for (const auto key : keys) input().pressKey(key);
  }
  void release(const Keys& keys) {
    for (auto key = keys.rbegin(); key != keys.rend(); ++key) input().releaseKey(*key);
  }
  static std::uint8_t keyOf(const HotkeyConfig& config) {
    return static_cast<std::uint8_t>(xKeycodeFromMac(config.keyCode));
  }
  /// Every hotkey of the table fires, and nothing else.
  void expectAllHotkeys() {
    for (const auto& [id, config] : hotkeys().configs()) {
      Keys keys;
      if (config.modifiers & carbonModifier::control) keys.push_back(key::Control);
      if (config.modifiers & carbonModifier::option) keys.push_back(key::Alt);
      if (config.modifiers & carbonModifier::shift) keys.push_back(key::Shift);
      if (config.modifiers & carbonModifier::command) keys.push_back(key::Super);
      keys.push_back(keyOf(config));
      fired_.clear();
      press(keys);
      release(keys);
      EXPECT_TRUE(runUntil([&] { return !fired_.empty(); }, 2s));
      EXPECT_EQ(fired_, std::vector<HotkeyID>{id});
    }
    fired_.clear();
  }

  std::shared_ptr<Window> window_;
  std::vector<HotkeyRecordingResult> results_;
  int timesLost_ = 0;

 private:
  Registration losses_;
};

TEST_F(CaptureRecordingTest, WhatIsPressedReachesNobodyElseHoweverLongItIsHeld) {
  desktop().run({"xset", "r", "rate", "120", "50"});
  OtherProgram other;
  PassedKeys passed;
  struct Case {
    Keys keys;
    HotkeyConfig config;
  };
  const Case cases[] = {
      {{key::Super, key::D}, {macKeyD, carbonModifier::command}},  // the window manager's
      {{key::Control, key::Alt, key::P},
       {macKeyP, carbonModifier::control | carbonModifier::option}},
      {{key::Shift, key::Super, key::V},
       {keyCode::v, carbonModifier::shift | carbonModifier::command}},
      {{key::Shift, key::P}, {macKeyP, carbonModifier::shift}},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.config.keyCode);
    record();
    press(test.keys);
    ASSERT_TRUE(runUntil([&] { return !results_.empty(); }));
    EXPECT_TRUE(runsWithout([&] { return isDesktopShown() || !fired_.empty(); }, 500ms));
    release(test.keys);
    ASSERT_EQ(results_.size(), 1u);
    const auto* captured = std::get_if<HotkeyCaptured>(&results_.front());
    ASSERT_TRUE(captured);
    EXPECT_EQ(captured->config, test.config);
    results_.clear();
    EXPECT_TRUE(runUntil([&] { return isKeyboardFree(other); }));
  }
  EXPECT_EQ(other.presses(), 0);
  EXPECT_EQ(passed.count, 0);
  EXPECT_EQ(timesLost_, 0);
  EXPECT_TRUE(window_->isKeyWindow());

  expectAllHotkeys();
  // What was kept from them reaches them all now.
  press({key::Control, key::Alt, key::P});
  release({key::Control, key::Alt, key::P});
  EXPECT_TRUE(runUntil([&] { return other.presses() == 1; }));
  input().tap(key::Q);
  EXPECT_TRUE(runUntil([&] { return passed.count > 0; }));
  press({key::Super, key::D});
  release({key::Super, key::D});
  EXPECT_TRUE(runUntil([&] { return isDesktopShown(); }));
}

TEST_F(CaptureRecordingTest, HoweverItEndsTheHotkeysAndTheKeyboardAreBack) {
  OtherProgram other;
  struct Case {
    const char* name;
    std::function<void()> end;
  };
  const Case cases[] = {
      {"Escape", [&] { input().tap(key::Escape); }},
      {"time-out", [] {}},
      {"cancelled", [] { hotkeys().cancelRecording(); }},
      {"a second one",
       [&] {
         record();
         EXPECT_FALSE(other.takeKeyboard());
         hotkeys().cancelRecording();
       }},
      {"the window goes", [&] { window_->orderOut(); }},
  };
  for (const auto& test : cases) {
    SCOPED_TRACE(test.name);
    record(0.5);
    EXPECT_FALSE(other.takeKeyboard());
    EXPECT_FALSE(
        desktop().windows().isGrabbedByOthers(key::V, XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4));
    test.end();
    ASSERT_TRUE(runUntil([&] { return !results_.empty(); }));
    EXPECT_TRUE(std::holds_alternative<HotkeyRecordingCancelled>(results_.front()));
    results_.clear();
    EXPECT_TRUE(runUntil([&] { return isKeyboardFree(other); }, 1s));
    expectAllHotkeys();
    show();
  }
}

TEST_F(CaptureRecordingTest, TakesTheKeyboardFromAHeldHotkeyAndWaitsForTheOneOfAnotherProgram) {
  desktop().run({"xset", "r", "off"});
  const Keys held{key::Control, key::Alt, key::Super, key::M};
  press(held);
  ASSERT_TRUE(runUntil([&] { return fired_ == std::vector{HotkeyID::micMute}; }));
  record();
  input().releaseKey(key::M);
  press({key::Q});
  ASSERT_TRUE(runUntil([&] { return !results_.empty(); }));
  EXPECT_TRUE(std::holds_alternative<HotkeyCaptured>(results_.front()));
  release({key::Q});
  release({key::Control, key::Alt, key::Super});
  results_.clear();

  OtherProgram other;
  ASSERT_TRUE(runUntil([&] { return other.takeKeyboard(); }));
  record();
  EXPECT_TRUE(runsWithout([&] { return !results_.empty(); }, 200ms));
  other.giveKeyboardBack();
  EXPECT_TRUE(runUntil([&] { return !isKeyboardFree(other); }));
  press({key::Control, key::Alt, key::P});
  EXPECT_TRUE(runUntil([&] { return !results_.empty(); }));
  release({key::Control, key::Alt, key::P});
  EXPECT_EQ(other.presses(), 0);
  EXPECT_TRUE(runUntil([&] { return isKeyboardFree(other); }));
  expectAllHotkeys();
}

TEST_F(CaptureRecordingTest, LabelsFollowTheLayoutAndKeysKeepTheirPlaces) {
  const HotkeyConfig z{6, carbonModifier::control | carbonModifier::option};
  const HotkeyConfig dash{27, carbonModifier::control | carbonModifier::command};
  ASSERT_EQ(hotkeys().set(HotkeyID::micMute, z, platform().userDefaults()), std::nullopt);
  EXPECT_EQ(hotkeys().displayString(z), "⌃⌥Z");
  struct Case {
    const char* layout;
    unsigned group;
    const char* z;
    const char* dash;
  };
  const Case cases[] = {{"de", 0, "⌃⌥Y", "⌃⌘SS"},   {"fr", 0, "⌃⌥W", "⌃⌘)"},
                        {"ru", 0, "⌃⌥Я", "⌃⌘-"},    {"dvorak", 0, "⌃⌥;", "⌃⌘["},
                        {"us,ru", 1, "⌃⌥Я", "⌃⌘-"}, {"us,de", 1, "⌃⌥Y", "⌃⌘SS"},
                        {"us,de", 0, "⌃⌥Z", "⌃⌘-"}};
  for (const auto& test : cases) {
    SCOPED_TRACE(test.layout);
    // Alt and Shift together switch to the next layout, and are no combination of their own.
    desktop().run({"setxkbmap", test.layout, "-option", "", "-option", "grp:alt_shift_toggle"});
    input().lockLayout(test.group);
    EXPECT_TRUE(runUntil([&] { return hotkeys().displayString(z) == test.z; }))
        << hotkeys().displayString(z);
    expectAllHotkeys();
    const std::pair<Keys, HotkeyCaptured> recorded[] = {
        {{key::Control, key::Alt, key::Z}, {z, test.z}},
        {{key::Control, key::Super, keyOf(dash)}, {dash, test.dash}}};
    for (const auto& [keys, expected] : recorded) {
      record();
      press({key::Alt, key::Shift});
      release({key::Alt, key::Shift});
      EXPECT_TRUE(runsWithout([&] { return !results_.empty(); }, 30ms));
      input().lockLayout(test.group);
      press(keys);
      EXPECT_TRUE(runUntil([&] { return !results_.empty(); }));
      release(keys);
      ASSERT_EQ(results_.size(), 1u);
      const auto* captured = std::get_if<HotkeyCaptured>(&results_.front());
      ASSERT_NE(captured, nullptr);
      EXPECT_EQ(captured->config, expected.config);
      EXPECT_EQ(captured->display, expected.display);
      results_.clear();
    }
  }
}

}  // namespace
}  // namespace zephyx
