#pragma once

#import <dispatch/dispatch.h>

#include <functional>
#include <memory>

#include "Platform/Dispatch.h"

namespace zephyx {

/// A queue of the system's, concurrent or serial, whose blocks can be waited for.
class MacWorkQueue final : public DispatchQueue {
 public:
  explicit MacWorkQueue(dispatch_queue_t queue);
  ~MacWorkQueue() override;

  void async(std::function<void()> block) override;
  void asyncAfter(double seconds, std::function<void()> block) override;

  /// Waits for what was handed in and has become due; drops what comes later.
  void finish();

 private:
  class Work;
  std::shared_ptr<Work> work_;
};

}  // namespace zephyx
