#pragma once

#include "Platform/EventTap.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

class SimulatedEventTaps final : public EventTaps {
 public:
  explicit SimulatedEventTaps(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  EventTapCreation createEventTap(std::uint64_t mask, EventTapCallbacks callbacks) override {
    dispatch_.requireMainThread("createEventTap");
    if (!canTake()) return {.tap = nullptr, .isBusy = !isRefusing_};
    auto state = std::make_shared<State>(State{mask, std::move(callbacks)});
    tap_ = state;
    return {.tap = std::make_unique<Tap>(*this, std::move(state))};
  }

  /// An event on its way from the devices; true when a tap has taken it out.
  bool take(const Event& event) {
    if (!takes(event.type)) return false;
    tap_.lock()->callbacks.event(event);
    return true;
  }
  /// Whether events of this type are taken out.
  bool takes(EventType type) const {
    const auto tap = tap_.lock();
    return tap && tap->isEnabled && (tap->mask & eventMask(type));
  }
  bool isThere() const { return !tap_.expired(); }

  /// The user has taken the permission away.
  void refuse() { isRefusing_ = true; }
  /// Another program has the devices for itself, or gives them back.
  void setBusy(bool isBusy) { isBusy_ = isBusy; }
  /// The system disables the tap that is there.
  void disable(EventType reason) {
    const auto tap = tap_.lock();
    tap->isEnabled = false;
    tap->callbacks.event({.type = reason});
  }
  /// It ends it for good.
  void invalidate() {
    const auto tap = tap_.lock();
    tap->isEnabled = false;
    tap->callbacks.invalidated();
  }

 private:
  struct State {
    std::uint64_t mask = 0;
    EventTapCallbacks callbacks;
    bool isEnabled = true;
  };
  class Tap final : public EventTap {
   public:
    Tap(SimulatedEventTaps& taps, std::shared_ptr<State> state)
        : taps_(taps), state_(std::move(state)) {}

    bool enable() override { return state_->isEnabled = taps_.canTake(); }

   private:
    SimulatedEventTaps& taps_;
    std::shared_ptr<State> state_;
  };

  bool canTake() const { return !isRefusing_ && !isBusy_; }

  SimulatedDispatch& dispatch_;
  std::weak_ptr<State> tap_;
  bool isRefusing_ = false;
  bool isBusy_ = false;
};

}  // namespace zephyx
