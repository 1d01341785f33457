#include "Tests/Simulated/SimulatedEventTaps.h"

#include <utility>

#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

class SimulatedEventTaps::Tap final : public EventTap {
 public:
  Tap(SimulatedEventTaps& taps, std::shared_ptr<State> state)
      : taps_(taps), state_(std::move(state)) {}

  bool enable() override { return state_->isEnabled = taps_.canTake(); }

 private:
  SimulatedEventTaps& taps_;
  std::shared_ptr<State> state_;
};

EventTapCreation SimulatedEventTaps::createEventTap(std::uint64_t mask,
                                                    EventTapCallbacks callbacks) {
  dispatch_.requireMainThread("createEventTap");
  if (!canTake()) return {.tap = nullptr, .isBusy = !isRefusing_};
  auto state = std::make_shared<State>(State{mask, std::move(callbacks)});
  tap_ = state;
  return {.tap = std::make_unique<Tap>(*this, std::move(state))};
}

bool SimulatedEventTaps::take(const Event& event) {
  if (!takes(event.type)) return false;
  tap_.lock()->callbacks.event(event);
  return true;
}

bool SimulatedEventTaps::takes(EventType type) const {
  const auto tap = tap_.lock();
  return tap && tap->isEnabled && (tap->mask & eventMask(type));
}

void SimulatedEventTaps::disable(EventType reason) {
  const auto tap = tap_.lock();
  tap->isEnabled = false;
  tap->callbacks.event({.type = reason});
}

void SimulatedEventTaps::invalidate() {
  const auto tap = tap_.lock();
  tap->isEnabled = false;
  tap->callbacks.invalidated();
}

}  // namespace zephyx
