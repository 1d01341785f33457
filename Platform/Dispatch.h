#pragma once

#include <functional>
#include <memory>
#include <string>

#include "Platform/Registration.h"

namespace zephyx {

/// A queue of work. Blocks of the main queue and of serial queues run one after another in the
/// order in which they became due; blocks of the global queue may run at the same time.
class DispatchQueue {
 public:
  virtual ~DispatchQueue() = default;

  /// Runs `block` later, never inside the call. Any thread.
  virtual void async(std::function<void()> block) = 0;

  /// Runs `block` no sooner than `seconds` from now. Any thread.
  virtual void asyncAfter(double seconds, std::function<void()> block) = 0;
};

/// What a queue's work is for. `utility`: nobody waits for it, so it gives way to all else that the
/// computer does.
enum class QualityOfService { userInitiated, utility };

/// A delayed block that can be taken back: it does not begin any more once the registration is
/// dropped, also when it is due and waits for its turn. Dropped on another thread than the queue's,
/// it may be under way. The registration may be dropped inside the block.
[[nodiscard]] Registration scheduleOnce(DispatchQueue& queue, double seconds,
                                        std::function<void()> block);

/// Queues, timers and clocks.
class Dispatch {
 public:
  virtual ~Dispatch() = default;

  /// The user interface's queue.
  virtual DispatchQueue& mainQueue() = 0;

  /// Concurrent, of user-initiated priority.
  virtual DispatchQueue& globalQueue() = 0;

  /// The queue of this label, made when it is first asked for: its blocks run off the main thread,
  /// one at a time, in the order in which they became due. It lives as long as the platform, at
  /// whose end blocks that are due still run and later ones are dropped. Main thread.
  virtual DispatchQueue& serialQueue(const std::string& label, QualityOfService quality) = 0;

  /// True on the main thread. Any thread.
  virtual bool isMainThread() const = 0;

  /// Calls `block` on the main thread every `interval` seconds until the registration is dropped.
  /// Fires in the common modes: also while a menu is tracked or a window is dragged. Main thread.
  [[nodiscard]] virtual Registration scheduleRepeatingTimer(double interval,
                                                            std::function<void()> block) = 0;

  /// Seconds since 1970. Any thread.
  virtual double wallClock() const = 0;

  /// Seconds since some moment of the past; nobody sets this clock. Any thread.
  virtual double mediaClock() const = 0;
};

}  // namespace zephyx
