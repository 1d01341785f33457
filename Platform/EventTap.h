#pragma once

#include <cstdint>
#include <functional>
#include <memory>

#include "Platform/Events.h"

namespace zephyx {

/// Takes events out on their way from the devices to all programs. They pass again when it is
/// destroyed, and when the process ends, however it ends.
class EventTap {
 public:
  virtual ~EventTap() = default;
  /// Goes on after the system has disabled it. False while another program stands in the way, or
  /// when the system does not let it.
  virtual bool enable() = 0;
};

/// Called on the main thread as long as the tap lives; they must not destroy it.
struct EventTapCallbacks {
  /// Hears that the system has disabled the tap, and of keys that were taken out. Other events may
  /// be dropped without a word.
  std::function<void(const Event&)> event;
  /// The tap has come to its end and cannot be enabled again.
  std::function<void()> invalidated;
};

struct EventTapCreation {
  std::unique_ptr<EventTap> tap;  ///< null when refused
  bool isBusy = false;            ///< refused for now: another program has the device for itself
};

/// Main thread.
class EventTaps {
 public:
  virtual ~EventTaps() = default;
  /// A tap before all others of the session, enabled: no event of a type in `mask` reaches anybody,
  /// this process's own windows and hot keys included.
  virtual EventTapCreation createEventTap(std::uint64_t mask, EventTapCallbacks callbacks) = 0;
};

}  // namespace zephyx
