#pragma once

#include <map>
#include <memory>

#include "Platform/Events.h"

namespace zephyx {

class SimulatedDispatch;

class SimulatedEventMonitors final : public EventMonitors {
 public:
  explicit SimulatedEventMonitors(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  Registration addLocalMonitor(std::uint64_t mask,
                               std::function<bool(const Event&)> handler) override;
  Registration captureKeyboard() override;

  /// An event on its way to one of the host's windows; false when a monitor swallowed it.
  bool deliver(const Event& event);
  /// Whether every key is the host's.
  bool hasKeyboard() const { return *captures_ > 0; }
  std::size_t count() const { return monitors_->size(); }

 private:
  struct Monitor {
    std::uint64_t mask;
    std::function<bool(const Event&)> handler;
  };
  using Monitors = std::map<std::uint64_t, std::shared_ptr<Monitor>>;

  SimulatedDispatch& dispatch_;
  std::shared_ptr<Monitors> monitors_ = std::make_shared<Monitors>();
  std::uint64_t nextId_ = 0;
  std::shared_ptr<int> captures_ = std::make_shared<int>(0);
};

}  // namespace zephyx
