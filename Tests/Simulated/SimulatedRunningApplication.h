#pragma once

#include <optional>

#include "Platform/Events.h"
#include "Platform/Image.h"
#include "Platform/Workspace.h"

namespace zephyx {

/// A program on the simulated machine, with how it behaves when it is to come to the front.
class SimulatedRunningApplication final : public RunningApplication {
 public:
  struct Description {
    std::string bundleIdentifier;
    std::string name;
    std::shared_ptr<Image> icon;
  };
  /// What the machine does for a program. Set by the workspace that runs it.
  struct Machine {
    std::function<bool(const SimulatedRunningApplication&)> isInFront;
    std::function<void(SimulatedRunningApplication&)> requestActivation;
    std::function<std::string()> pastedString;
    std::function<void(const std::string&, double delay)> copyString;
    std::function<std::string(std::uint16_t)> character;
  };

  SimulatedRunningApplication(Description description, Machine machine)
      : description_(std::move(description)), machine_(std::move(machine)) {}

  std::string bundleIdentifier() const override { return description_.bundleIdentifier; }
  std::string localizedName() const override { return description_.name; }
  std::shared_ptr<Image> icon() const override { return description_.icon; }
  bool isActive() const override { return machine_.isInFront(*this); }
  bool activateIgnoringOtherApps() override { return request(legacyRequests); }
  bool activateCooperatively() override { return request(cooperativeRequests); }

  /// The request from which on it comes to the front; nothing for a program that never does.
  std::optional<int> comesForwardAtRequest = 1;
  /// Whether requests can be made at all.
  bool acceptsRequests = true;
  int legacyRequests = 0;
  int cooperativeRequests = 0;

  /// Its one text field, which has its keyboard.
  std::string text;
  std::string selection;
  double copyTime = 0;  ///< seconds from the chord to the copy
  void receiveKey(std::uint16_t keyCode, std::uint64_t modifierFlags) {
    if (modifierFlags == eventModifier::command) {
      if (keyCode == keyCode::v) text += machine_.pastedString();
      if (keyCode == keyCode::c && !selection.empty()) machine_.copyString(selection, copyTime);
    } else if (modifierFlags == 0) {
      text += machine_.character(keyCode);
    }
  }

 private:
  bool request(int& count) {
    ++count;
    if (!acceptsRequests) return false;
    if (comesForwardAtRequest && legacyRequests + cooperativeRequests >= *comesForwardAtRequest) {
      machine_.requestActivation(*this);
    }
    return true;
  }

  Description description_;
  Machine machine_;
};

}  // namespace zephyx
