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

  /// An event on its way to one of the host's windows; false when a monitor swallowed it.
  bool deliver(const Event& event);
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
};

}  // namespace zephyx
