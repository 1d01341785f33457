#pragma once

#include <optional>

#include "Platform/Alert.h"
#include "Platform/Events.h"
#include "Tests/Simulated/SimulatedApplication.h"
#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedFaults.h"

namespace zephyx {

/// Questions to the user; the newest one is on top and has the keyboard.
class SimulatedAlerts final : public Alerts {
 public:
  SimulatedAlerts(SimulatedDispatch& dispatch, SimulatedApplication& application,
                  SimulatedFaults& faults)
      : dispatch_(dispatch), application_(application), faults_(faults) {}

  void show(const Alert& alert, std::function<void(std::size_t)> completion) override {
    dispatch_.requireMainThread("Alerts::show");
    if (alert.buttons.empty()) faults_.add("an alert without a button");
    questions_.push_back({alert, std::move(completion)});
    application_.activateIgnoringOtherApps();
    application_.takeKeyboardAway();
  }

  /// The one on top; nothing when there is none.
  std::optional<Alert> shown() const {
    return questions_.empty() ? std::nullopt : std::optional(questions_.back().alert);
  }
  /// The user presses a button of the one on top.
  void press(std::size_t button) {
    auto question = std::move(questions_.back());
    questions_.pop_back();
    question.completion(button);
  }
  /// True when a question is there to take the key.
  bool receive(const Event& event) {
    if (questions_.empty()) return false;
    if (event.keyCode == returnKey) {
      press(0);
    } else if (event.keyCode == keyCode::escape) {
      press(questions_.back().alert.buttons.size() - 1);
    }
    return true;
  }

 private:
  static constexpr std::uint16_t returnKey = 36;

  struct Question {
    Alert alert;
    std::function<void(std::size_t)> completion;
  };

  SimulatedDispatch& dispatch_;
  SimulatedApplication& application_;
  SimulatedFaults& faults_;
  std::vector<Question> questions_;
};

}  // namespace zephyx
