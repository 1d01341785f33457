#include "Tests/Simulated/SimulatedRunningApplication.h"

#include "Platform/Events.h"

namespace zephyx {
bool SimulatedRunningApplication::request(int& count) {
  ++count;
  if (!acceptsRequests) return false;
  if (comesForwardAtRequest && legacyRequests + cooperativeRequests >= *comesForwardAtRequest) {
    machine_.requestActivation(*this);
  }
  return true;
}

void SimulatedRunningApplication::receiveKey(std::uint16_t keyCode, std::uint64_t modifierFlags) {
  if (modifierFlags == eventModifier::command) {
    if (keyCode == keyCode::v) text += machine_.pastedString();
    if (keyCode == keyCode::c && !selection.empty()) machine_.copyString(selection, copyTime);
  } else if (modifierFlags == 0) {
    text += machine_.character(keyCode);
  }
}

}  // namespace zephyx
