#pragma once

#include <functional>
#include <memory>

#include "Platform/Dispatch.h"

namespace zephyx {

/// The main thread's queue, served by the main run loop in its common modes. Not the system's main
/// dispatch queue: that one stands still while one of its blocks tracks a menu or runs an alert,
/// this one goes on. Made and destroyed on the main thread; blocks that have not run by then are
/// dropped.
class MacMainQueue final : public DispatchQueue {
 public:
  MacMainQueue();
  ~MacMainQueue() override;

  void async(std::function<void()> block) override;
  void asyncAfter(double seconds, std::function<void()> block) override;

 private:
  class Blocks;
  std::shared_ptr<Blocks> blocks_;
};

}  // namespace zephyx
