#pragma once

#include "Platform/Events.h"
#include "Tests/Simulated/SimulatedAccessibility.h"
#include "Tests/Simulated/SimulatedAlerts.h"
#include "Tests/Simulated/SimulatedApplication.h"
#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedEventMonitors.h"
#include "Tests/Simulated/SimulatedEventTaps.h"
#include "Tests/Simulated/SimulatedHotKeys.h"
#include "Tests/Simulated/SimulatedPreviewPanel.h"
#include "Tests/Simulated/SimulatedWindow.h"
#include "Tests/Simulated/SimulatedWorkspace.h"

namespace zephyx {

/// The user's keyboard, and the way of every key, the user's own or posted by the host: event taps
/// first, then hot keys, then whatever has the keyboard.
class SimulatedKeyboard final : public EventPoster {
 public:
  struct Machine {
    SimulatedDispatch& dispatch;
    SimulatedAccessibility& accessibility;
    SimulatedEventTaps& eventTaps;
    SimulatedHotKeys& hotKeys;
    SimulatedWorkspace& workspace;
    SimulatedApplication& application;
    SimulatedAlerts& alerts;
    SimulatedEventMonitors& eventMonitors;
    SimulatedPreviewPanel& previewPanel;
  };

  explicit SimulatedKeyboard(Machine machine) : machine_(machine) {}

  bool postKey(std::uint16_t keyCode, std::uint64_t modifierFlags) override {
    machine_.dispatch.requireMainThread("postKey");
    if (!canPost_) return false;
    posted_.push_back({keyCode, modifierFlags});
    if (!machine_.accessibility.eventsArrive()) return true;
    machine_.dispatch.mainQueue().async(
        [this, keyCode, modifierFlags] { travel(keyCode, modifierFlags); });
    return true;
  }

  /// The user types a key, together with the modifiers that are held.
  void press(std::uint16_t keyCode, std::uint64_t modifierFlags) {
    travel(keyCode, modifierFlags | held_);
  }
  /// A key that stays down goes on typing.
  void repeat(std::uint16_t keyCode, std::uint64_t modifierFlags) {
    travel(keyCode, modifierFlags | held_, true);
  }
  void holdModifiers(std::uint64_t modifierFlags) { held_ = modifierFlags; }

  struct Posted {
    std::uint16_t keyCode;
    std::uint64_t modifierFlags;
    bool operator==(const Posted&) const = default;
  };
  const std::vector<Posted>& posted() const { return posted_; }
  /// Events cannot be made any more.
  void refuseToPost() { canPost_ = false; }

 private:
  static std::uint32_t carbonModifiers(std::uint64_t flags) {
    std::uint32_t carbon = 0;
    if (flags & eventModifier::command) carbon |= carbonModifier::command;
    if (flags & eventModifier::shift) carbon |= carbonModifier::shift;
    if (flags & eventModifier::option) carbon |= carbonModifier::option;
    if (flags & eventModifier::control) carbon |= carbonModifier::control;
    return carbon;
  }
  void travel(std::uint16_t keyCode, std::uint64_t modifierFlags, bool isRepeat = false) {
    const Event event{EventType::keyDown, modifierFlags, keyCode, isRepeat};
    if (machine_.eventTaps.take(event)) return;
    const bool isCaptured = machine_.eventMonitors.hasKeyboard();
    const SimulatedHotKeys::Combination combination{keyCode, carbonModifiers(modifierFlags)};
    if (!isCaptured && isRepeat && machine_.hotKeys.registered().contains(combination)) return;
    if (!isCaptured && machine_.hotKeys.press(combination)) return;
    if (!isCaptured && !machine_.workspace.hostIsInFront()) {
      if (const auto& target = machine_.workspace.frontmost()) {
        target->receiveKey(keyCode, modifierFlags);
      }
      return;
    }
    if (!machine_.eventMonitors.deliver(event)) return;
    if (machine_.alerts.receive(event)) return;
    if (const auto window = machine_.application.simulatedKeyWindow()) {
      window->receivedKeys.push_back(event);
    } else {
      machine_.previewPanel.receive(event);
    }
  }

  Machine machine_;
  std::uint64_t held_ = 0;
  bool canPost_ = true;
  std::vector<Posted> posted_;
};

}  // namespace zephyx
