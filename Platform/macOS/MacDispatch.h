#pragma once

#include <functional>

#include "Platform/Dispatch.h"
#include "Platform/macOS/MacGlobalQueue.h"
#include "Platform/macOS/MacMainQueue.h"

namespace zephyx {

/// Made and destroyed on the main thread. Destruction waits as `finishGlobalWork` does.
class MacDispatch final : public Dispatch {
 public:
  DispatchQueue& mainQueue() override { return mainQueue_; }
  DispatchQueue& globalQueue() override { return globalQueue_; }
  bool isMainThread() const override;
  [[nodiscard]] Registration scheduleRepeatingTimer(double interval,
                                                    std::function<void()> block) override;
  double wallClock() const override;

  /// Waits for the global queue's blocks and takes no further ones: before the services that they
  /// use are destroyed.
  void finishGlobalWork() { globalQueue_.finish(); }

 private:
  MacMainQueue mainQueue_;
  MacGlobalQueue globalQueue_;  // destroyed first: its blocks end on the main queue
};

}  // namespace zephyx
