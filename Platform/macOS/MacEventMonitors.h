#pragma once

#include <cstdint>
#include <functional>

#include "Platform/Events.h"

namespace zephyx {

/// Monitors see events before windows do. Events that a loop of their own takes out (a tracked
/// menu, a pressed control) pass them by.
class MacEventMonitors final : public EventMonitors {
 public:
  [[nodiscard]] Registration addLocalMonitor(std::uint64_t mask,
                                             std::function<bool(const Event&)> handler) override;
  /// Empty: keys that the system keeps for itself never reach a program's own windows, and all
  /// others go to the window that has the keyboard, where monitors see them first.
  [[nodiscard]] Registration captureKeyboard() override { return {}; }
};

}  // namespace zephyx
