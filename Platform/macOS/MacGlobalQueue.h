#pragma once

#include <functional>
#include <memory>

#include "Platform/Dispatch.h"

namespace zephyx {

/// The system's concurrent queue of user-initiated priority.
class MacGlobalQueue final : public DispatchQueue {
 public:
  MacGlobalQueue();
  ~MacGlobalQueue() override;

  void async(std::function<void()> block) override;
  void asyncAfter(double seconds, std::function<void()> block) override;

  /// Waits for what was handed in and has become due; drops what comes later.
  void finish();

 private:
  class Work;
  std::shared_ptr<Work> work_;
};

}  // namespace zephyx
