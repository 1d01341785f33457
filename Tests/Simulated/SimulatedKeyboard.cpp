#include "Tests/Simulated/SimulatedKeyboard.h"

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
namespace {

std::uint32_t carbonModifiers(std::uint64_t flags) {
  std::uint32_t carbon = 0;
  if (flags & eventModifier::command) carbon |= carbonModifier::command;
  if (flags & eventModifier::shift) carbon |= carbonModifier::shift;
  if (flags & eventModifier::option) carbon |= carbonModifier::option;
  if (flags & eventModifier::control) carbon |= carbonModifier::control;
  return carbon;
}

}  // namespace

bool SimulatedKeyboard::postKey(std::uint16_t keyCode, std::uint64_t modifierFlags) {
  machine_.dispatch.requireMainThread("postKey");
  if (!canPost_) return false;
  posted_.push_back({keyCode, modifierFlags});
  if (!machine_.accessibility.eventsArrive()) return true;
  machine_.dispatch.mainQueue().async(
      [this, keyCode, modifierFlags] { travel(keyCode, modifierFlags); });
  return true;
}

void SimulatedKeyboard::press(std::uint16_t keyCode, std::uint64_t modifierFlags) {
  travel(keyCode, modifierFlags | held_);
}

void SimulatedKeyboard::repeat(std::uint16_t keyCode, std::uint64_t modifierFlags) {
  travel(keyCode, modifierFlags | held_, true);
}

void SimulatedKeyboard::travel(std::uint16_t keyCode, std::uint64_t modifierFlags, bool isRepeat) {
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

}  // namespace zephyx
