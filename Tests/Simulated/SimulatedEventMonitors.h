#pragma once

#include "Platform/Events.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

class SimulatedEventMonitors final : public EventMonitors {
 public:
  explicit SimulatedEventMonitors(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  Registration addLocalMonitor(std::uint64_t mask,
                               std::function<bool(const Event&)> handler) override {
    dispatch_.requireMainThread("addLocalMonitor");
    const auto id = nextId_++;
    monitors_->emplace(id, std::make_shared<Monitor>(Monitor{mask, std::move(handler)}));
    return Registration([monitors = monitors_, id] { monitors->erase(id); });
  }
  Registration captureKeyboard() override {
    dispatch_.requireMainThread("captureKeyboard");
    ++*captures_;
    return Registration([captures = captures_] { --*captures; });
  }

  /// An event on its way to one of the host's windows; false when a monitor swallowed it.
  bool deliver(const Event& event) {
    for (const auto& [id, monitor] : Monitors(*monitors_)) {
      if (!(monitor->mask & eventMask(event.type)) || !monitors_->contains(id)) continue;
      if (!monitor->handler(event)) return false;
    }
    return true;
  }
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
