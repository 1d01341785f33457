#pragma once

#include <memory>

#include "Platform/EventTap.h"

namespace zephyx {

class SimulatedDispatch;

class SimulatedEventTaps final : public EventTaps {
 public:
  explicit SimulatedEventTaps(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  EventTapCreation createEventTap(std::uint64_t mask, EventTapCallbacks callbacks) override;

  /// An event on its way from the devices; true when a tap has taken it out.
  bool take(const Event& event);
  /// Whether events of this type are taken out.
  bool takes(EventType type) const;
  bool isThere() const { return !tap_.expired(); }

  /// The user has taken the permission away.
  void refuse() { isRefusing_ = true; }
  /// Another program has the devices for itself, or gives them back.
  void setBusy(bool isBusy) { isBusy_ = isBusy; }
  /// The system disables the tap that is there.
  void disable(EventType reason);
  /// It ends it for good.
  void invalidate();

 private:
  struct State {
    std::uint64_t mask = 0;
    EventTapCallbacks callbacks;
    bool isEnabled = true;
  };
  class Tap;

  bool canTake() const { return !isRefusing_ && !isBusy_; }

  SimulatedDispatch& dispatch_;
  std::weak_ptr<State> tap_;
  bool isRefusing_ = false;
  bool isBusy_ = false;
};

}  // namespace zephyx
