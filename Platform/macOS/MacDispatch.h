#pragma once

#include <functional>
#include <map>
#include <string>

#include "Platform/Dispatch.h"
#include "Platform/macOS/MacMainQueue.h"
#include "Platform/macOS/MacWorkQueue.h"

namespace zephyx {

/// Made and destroyed on the main thread. Destruction waits as `finishWork` does.
class MacDispatch final : public Dispatch {
 public:
  DispatchQueue& mainQueue() override { return mainQueue_; }
  DispatchQueue& globalQueue() override { return globalQueue_; }
  DispatchQueue& serialQueue(const std::string& label, QualityOfService quality) override;
  bool isMainThread() const override;
  [[nodiscard]] Registration scheduleRepeatingTimer(double interval,
                                                    std::function<void()> block) override;
  double wallClock() const override;
  double mediaClock() const override;

  /// Waits for the blocks of the global queue and the serial ones, and takes no further ones:
  /// before the services that they use are destroyed.
  void finishWork();

 private:
  MacMainQueue mainQueue_;
  // Destroyed before the main queue, on which their blocks end.
  MacWorkQueue globalQueue_{dispatch_get_global_queue(QOS_CLASS_USER_INITIATED, 0)};
  std::map<std::string, MacWorkQueue> serialQueues_;  ///< by label
};

}  // namespace zephyx
