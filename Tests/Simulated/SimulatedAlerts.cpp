#include "Tests/Simulated/SimulatedAlerts.h"

#include <utility>

#include "Tests/Simulated/SimulatedApplication.h"
#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedFaults.h"

namespace zephyx {
namespace {

constexpr std::uint16_t returnKey = 36;

}  // namespace

void SimulatedAlerts::show(const Alert& alert, std::function<void(std::size_t)> completion) {
  dispatch_.requireMainThread("Alerts::show");
  if (alert.buttons.empty()) faults_.add("an alert without a button");
  questions_.push_back({alert, std::move(completion)});
  application_.activateIgnoringOtherApps();
  application_.takeKeyboardAway();
}

std::optional<Alert> SimulatedAlerts::shown() const {
  return questions_.empty() ? std::nullopt : std::optional(questions_.back().alert);
}

void SimulatedAlerts::press(std::size_t button) {
  auto question = std::move(questions_.back());
  questions_.pop_back();
  question.completion(button);
}

bool SimulatedAlerts::receive(const Event& event) {
  if (questions_.empty()) return false;
  if (event.keyCode == returnKey) {
    press(0);
  } else if (event.keyCode == keyCode::escape) {
    press(questions_.back().alert.buttons.size() - 1);
  }
  return true;
}

}  // namespace zephyx
