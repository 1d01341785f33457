#pragma once

#include <optional>
#include <vector>

#include "Platform/Alert.h"
#include "Platform/Events.h"

namespace zephyx {

class SimulatedApplication;
class SimulatedDispatch;
class SimulatedFaults;

/// Questions to the user; the newest one is on top and has the keyboard.
class SimulatedAlerts final : public Alerts {
 public:
  SimulatedAlerts(SimulatedDispatch& dispatch, SimulatedApplication& application,
                  SimulatedFaults& faults)
      : dispatch_(dispatch), application_(application), faults_(faults) {}

  void show(const Alert& alert, std::function<void(std::size_t)> completion) override;

  /// The one on top; nothing when there is none.
  std::optional<Alert> shown() const;
  /// The user presses a button of the one on top.
  void press(std::size_t button);
  /// True when a question is there to take the key.
  bool receive(const Event& event);

 private:
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
