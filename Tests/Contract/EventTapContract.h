#pragma once

#include "Platform/Application.h"
#include "Platform/EventTap.h"
#include "Platform/HotKeys.h"
#include "Platform/Window.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

class EventTapContract : public ContractTest {
 protected:
  static constexpr std::uint16_t keyA = 0;
  static constexpr std::uint16_t keyT = 17;
  static constexpr auto controlOption = eventModifier::control | eventModifier::option;
  static constexpr std::uint64_t keys =
      eventMask(EventType::keyDown) | eventMask(EventType::keyUp) |
      eventMask(EventType::flagsChanged) | eventMask(EventType::systemDefined);
  static constexpr std::uint64_t mouse =
      eventMask(EventType::mouseMoved) | eventMask(EventType::leftMouseDown) |
      eventMask(EventType::leftMouseUp) | eventMask(EventType::scrollWheel);

  std::unique_ptr<EventTap> makeTap(std::uint64_t mask) {
    auto creation = platform().eventTaps().createEventTap(
        mask, {.event =
                   [this](const Event& event) {
                     if (event.type == EventType::keyDown) seen_.push_back(event);
                   },
               .invalidated = [] { ADD_FAILURE() << "the tap has ended by itself"; }});
    EXPECT_FALSE(creation.isBusy);
    EXPECT_TRUE(creation.tap);
    return std::move(creation.tap);
  }

  std::vector<Event> seen_;
};

TEST_P(EventTapContract, KeysReachNobodyButTheTapUntilItEnds) {
  desktop().startOtherApplication();
  int fired = 0;
  const auto handler = platform().hotKeys().setPressedHandler([&](HotKeyIdentity) { ++fired; });
  const auto hotKey = platform().hotKeys().registerHotKey(
      keyT, carbonModifier::control | carbonModifier::option, {1, 3});
  ASSERT_TRUE(hotKey.handle);

  auto tap = makeTap(keys);
  desktop().pressKey(keyA, 0);
  desktop().pressKey(keyT, controlOption);
  ASSERT_TRUE(becomesTrue([&] { return seen_.size() == 2; }));
  EXPECT_EQ(seen_[0].keyCode, keyA);
  EXPECT_EQ(seen_[1].keyCode, keyT);
  EXPECT_EQ(seen_[1].modifierFlags, controlOption);
  EXPECT_FALSE(seen_[1].isRepeat);
  desktop().pass(0.2);
  EXPECT_EQ(desktop().otherApplicationText(), "");
  EXPECT_EQ(fired, 0);

  tap.reset();
  desktop().pressKey(keyT, controlOption);
  desktop().pressKey(keyA, 0);
  EXPECT_TRUE(becomesTrue([&] { return fired == 1; }));
  EXPECT_TRUE(becomesTrue([&] { return desktop().otherApplicationText() == "a"; }));
  EXPECT_EQ(seen_.size(), 2u);
}

TEST_P(EventTapContract, NorDoTheyReachTheHostsOwnWindows) {
  const auto window = platform().application().makeWindow(
      {.kind = WindowKind::panel, .contentRect = {{100, 100}, {300, 200}}});
  window->makeKeyAndOrderFront();
  platform().application().activateIgnoringOtherApps();
  ASSERT_TRUE(becomesTrue([&] { return window->isKeyWindow(); }));
  int monitored = 0;
  const auto monitor =
      platform().eventMonitors().addLocalMonitor(eventMask(EventType::keyDown), [&](const Event&) {
        ++monitored;
        return true;
      });
  auto tap = makeTap(keys);
  desktop().pressKey(keyA, 0);
  EXPECT_TRUE(becomesTrue([&] { return seen_.size() == 1; }));
  desktop().pass(0.2);
  EXPECT_EQ(monitored, 0);
  EXPECT_TRUE(window->isKeyWindow());
  tap.reset();
  desktop().pressKey(keyA, 0);
  EXPECT_TRUE(becomesTrue([&] { return monitored == 1; }));
}

TEST_P(EventTapContract, ATapForTheMouseLeavesTheKeyboardAlone) {
  desktop().startOtherApplication();
  const auto tap = makeTap(mouse);
  desktop().pressKey(keyA, 0);
  EXPECT_TRUE(becomesTrue([&] { return desktop().otherApplicationText() == "a"; }));
  EXPECT_TRUE(seen_.empty());
}

}  // namespace zephyx
