#pragma once

#include <cstdint>
#include <vector>

#include "Platform/Events.h"

namespace zephyx {

class SimulatedAccessibility;
class SimulatedAlerts;
class SimulatedApplication;
class SimulatedDispatch;
class SimulatedEventMonitors;
class SimulatedEventTaps;
class SimulatedHotKeys;
class SimulatedPreviewPanel;
class SimulatedWorkspace;

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

  bool postKey(std::uint16_t keyCode, std::uint64_t modifierFlags) override;

  /// The user types a key, together with the modifiers that are held.
  void press(std::uint16_t keyCode, std::uint64_t modifierFlags);
  /// A key that stays down goes on typing.
  void repeat(std::uint16_t keyCode, std::uint64_t modifierFlags);
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
  void travel(std::uint16_t keyCode, std::uint64_t modifierFlags, bool isRepeat = false);

  Machine machine_;
  std::uint64_t held_ = 0;
  bool canPost_ = true;
  std::vector<Posted> posted_;
};

}  // namespace zephyx
