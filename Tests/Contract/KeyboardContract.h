#pragma once

#include "Platform/Application.h"
#include "Platform/Events.h"
#include "Platform/HotKeys.h"
#include "Platform/Pasteboard.h"
#include "Platform/Window.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

/// Hot keys, posted keys, event monitors and the layout.
class KeyboardContract : public ContractTest {
 protected:
  static constexpr std::uint16_t keyA = 0;
  static constexpr std::uint16_t keyT = 17;
  static constexpr std::uint16_t keyP = 35;
  static constexpr std::uint32_t carbonControlOption =
      carbonModifier::control | carbonModifier::option;
  static constexpr std::uint64_t controlOption = eventModifier::control | eventModifier::option;

  HotKeys& hotKeys() { return platform().hotKeys(); }

  Registration recordPresses() {
    return hotKeys().setPressedHandler([this](HotKeyIdentity identity) {
      pressed_.push_back(identity.id);
      signature_ = identity.signature;
    });
  }

  std::vector<std::uint32_t> pressed_;
  std::uint32_t signature_ = 0;
};

TEST_P(KeyboardContract, AHotKeyFiresOncePerPressWhateverHasTheKeyboardAndReachesNobodyElse) {
  desktop().startOtherApplication();
  const auto handler = recordPresses();
  const auto first = hotKeys().registerHotKey(keyT, carbonControlOption, {0x5A455048, 3});
  const auto second = hotKeys().registerHotKey(keyP, carbonControlOption, {0x5A455048, 8});
  ASSERT_EQ(first.status, hotKeyStatus::noErr);
  ASSERT_EQ(second.status, hotKeyStatus::noErr);
  EXPECT_TRUE(first.handle);

  desktop().pressKey(keyT, controlOption);
  EXPECT_TRUE(becomesTrue([&] { return pressed_.size() == 1; }));
  desktop().pressKey(keyP, controlOption);
  desktop().pressKey(keyT, controlOption);
  EXPECT_TRUE(becomesTrue([&] { return pressed_.size() == 3; }));
  EXPECT_EQ(pressed_, (std::vector<std::uint32_t>{3, 8, 3}));
  EXPECT_EQ(signature_, 0x5A455048u);
  desktop().pressKey(keyA, 0);
  EXPECT_TRUE(becomesTrue([&] { return desktop().otherApplicationText() == "a"; }));
  desktop().pressKey(keyT, eventModifier::control);
  desktop().pass(0.2);
  EXPECT_EQ(pressed_.size(), 3u);
}

TEST_P(KeyboardContract, ADroppedHotKeyOrHandlerIsSilentAndTheCombinationFree) {
  desktop().startOtherApplication();
  auto handler = recordPresses();
  auto hotKey = hotKeys().registerHotKey(keyT, carbonControlOption, {1, 3});
  hotKey.handle.reset();
  desktop().pressKey(keyT, controlOption);
  desktop().pass(0.2);
  EXPECT_TRUE(pressed_.empty());
  EXPECT_EQ(hotKeys().registerHotKey(keyT, carbonControlOption, {1, 4}).status,
            hotKeyStatus::noErr);
  const auto again = hotKeys().registerHotKey(keyT, carbonControlOption, {1, 5});
  ASSERT_EQ(again.status, hotKeyStatus::noErr);
  handler.reset();
  desktop().pressKey(keyT, controlOption);
  desktop().pass(0.2);
  EXPECT_TRUE(pressed_.empty());
}

TEST_P(KeyboardContract, ACombinationOfAnotherProgramIsRefusedUntilItIsGivenBack) {
  desktop().startOtherApplication();
  auto held = desktop().otherProgramHoldsHotKey(keyT, carbonControlOption);
  const auto refused = hotKeys().registerHotKey(keyT, carbonControlOption, {1, 3});
  EXPECT_EQ(refused.status, hotKeyStatus::exists);
  EXPECT_FALSE(refused.handle);
  EXPECT_EQ(hotKeys().registerHotKey(keyP, carbonControlOption, {1, 8}).status,
            hotKeyStatus::noErr);
  held.reset();
  EXPECT_EQ(hotKeys().registerHotKey(keyT, carbonControlOption, {1, 3}).status,
            hotKeyStatus::noErr);
}

TEST_P(KeyboardContract, PostedKeysTakeNoPartOfTheModifiersThatTheUserHolds) {
  desktop().otherProgramCopies({{pasteboardType::string, {'h', 'i', '!'}}});
  desktop().startOtherApplication();
  desktop().holdModifiers(controlOption);
  EXPECT_TRUE(platform().eventPoster().postKey(keyCode::v, eventModifier::command));
  EXPECT_TRUE(becomesTrue([&] { return desktop().otherApplicationText() == "hi!"; }));
  desktop().releaseModifiers();
  desktop().pressKey(keyA, 0);
  EXPECT_TRUE(becomesTrue([&] { return desktop().otherApplicationText() == "hi!a"; }));
}

TEST_P(KeyboardContract, MonitorsSeeKeysOfTheHostsWindowsWithTheirModifiers) {
  desktop().startOtherApplication();
  const auto window = platform().application().makeWindow(
      {.kind = WindowKind::panel, .contentRect = {{100, 100}, {300, 200}}});
  std::vector<Event> seen;
  int afterSwallow = 0;
  const auto first = platform().eventMonitors().addLocalMonitor(
      eventMask(EventType::keyDown), [&](const Event& event) {
        seen.push_back(event);
        return event.keyCode != keyCode::space;
      });
  Registration once;
  once =
      platform().eventMonitors().addLocalMonitor(eventMask(EventType::keyDown), [&](const Event&) {
        ++afterSwallow;
        once.reset();
        return true;
      });
  const auto mouseOnly = platform().eventMonitors().addLocalMonitor(
      eventMask(EventType::leftMouseUp), [&](const Event&) {
        ADD_FAILURE() << "a key in a monitor for the mouse";
        return true;
      });

  desktop().pressKey(keyA, 0);
  desktop().pass(0.2);
  EXPECT_TRUE(seen.empty()) << "a key of another application";

  window->makeKeyAndOrderFront();
  platform().application().activateIgnoringOtherApps();
  ASSERT_TRUE(becomesTrue([&] { return window->isKeyWindow(); }));
  desktop().pressKey(keyCode::space, 0);
  EXPECT_TRUE(becomesTrue([&] { return seen.size() == 1; }));
  EXPECT_EQ(afterSwallow, 0);
  desktop().pressKey(keyCode::leftArrow, eventModifier::control);
  EXPECT_TRUE(becomesTrue([&] { return seen.size() == 2; }));
  EXPECT_EQ(seen.back().keyCode, keyCode::leftArrow);
  EXPECT_TRUE(seen.back().modifierFlags & eventModifier::control);
  EXPECT_FALSE(seen.back().modifierFlags & eventModifier::shift);
  desktop().pressKey(keyA, 0);
  EXPECT_TRUE(becomesTrue([&] { return seen.size() == 3; }));
  EXPECT_EQ(afterSwallow, 1);
}

TEST_P(KeyboardContract, ACapturedKeyboardIsTheHostsAloneUntilItIsGivenBack) {
  desktop().startOtherApplication();
  const auto theirs = desktop().otherProgramHoldsHotKey(keyT, carbonControlOption);
  const auto window = platform().application().makeWindow(
      {.kind = WindowKind::panel, .contentRect = {{100, 100}, {300, 200}}});
  window->makeKeyAndOrderFront();
  platform().application().activateIgnoringOtherApps();
  ASSERT_TRUE(becomesTrue([&] { return window->isKeyWindow(); }));
  std::vector<Event> seen;
  const auto monitor = platform().eventMonitors().addLocalMonitor(eventMask(EventType::keyDown),
                                                                  [&](const Event& event) {
                                                                    seen.push_back(event);
                                                                    return false;
                                                                  });

  desktop().pressKey(keyT, controlOption);
  desktop().pass(0.2);
  EXPECT_TRUE(seen.empty());
  auto capture = platform().eventMonitors().captureKeyboard();
  ASSERT_TRUE(capture);
  desktop().pressKey(keyT, controlOption);
  EXPECT_TRUE(becomesTrue([&] { return seen.size() == 1; }));
  EXPECT_EQ(seen.back().keyCode, keyT);
  EXPECT_EQ(seen.back().modifierFlags, controlOption);
  EXPECT_TRUE(window->isKeyWindow());
  capture.reset();
  desktop().pressKey(keyT, controlOption);
  desktop().pass(0.2);
  EXPECT_EQ(seen.size(), 1u);
  desktop().pressKey(keyA, 0);
  EXPECT_TRUE(becomesTrue([&] { return seen.size() == 2; }));
}

TEST_P(KeyboardContract, TheLayoutNamesKeysUnshifted) {
  const auto& layout = platform().keyboardLayout();
  EXPECT_EQ(layout.character(keyT), "t");
  EXPECT_EQ(layout.character(keyCode::v), "v");
  EXPECT_EQ(layout.character(500), "");
  EXPECT_EQ(layout.uppercased("ö"), "Ö");
  EXPECT_EQ(layout.uppercased("ß"), "SS");
  EXPECT_EQ(layout.lowercased("Я"), "я");
}

}  // namespace zephyx
