#pragma once

#include <functional>
#include <memory>

#include "Platform/Dispatch.h"

namespace zephyx {

/// Runs blocks one at a time on the threads of a concurrent queue, which outlives it. Blocks that
/// were handed in still run when this object has gone.
class SerialQueue final : public DispatchQueue {
 public:
  explicit SerialQueue(DispatchQueue& concurrent);
  ~SerialQueue() override;

  void async(std::function<void()> block) override;
  void asyncAfter(double seconds, std::function<void()> block) override;

 private:
  class Blocks;

  DispatchQueue& concurrent_;
  std::shared_ptr<Blocks> blocks_;
};

}  // namespace zephyx
