#include "Tests/Simulated/SimulatedEventMonitors.h"

#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

Registration SimulatedEventMonitors::addLocalMonitor(std::uint64_t mask,
                                                     std::function<bool(const Event&)> handler) {
  dispatch_.requireMainThread("addLocalMonitor");
  const auto id = nextId_++;
  monitors_->emplace(id, std::make_shared<Monitor>(Monitor{mask, std::move(handler)}));
  return Registration([monitors = monitors_, id] { monitors->erase(id); });
}

Registration SimulatedEventMonitors::captureKeyboard() {
  dispatch_.requireMainThread("captureKeyboard");
  ++*captures_;
  return Registration([captures = captures_] { --*captures; });
}

bool SimulatedEventMonitors::deliver(const Event& event) {
  for (const auto& [id, monitor] : Monitors(*monitors_)) {
    if (!(monitor->mask & eventMask(event.type)) || !monitors_->contains(id)) continue;
    if (!monitor->handler(event)) return false;
  }
  return true;
}

}  // namespace zephyx
