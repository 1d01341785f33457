#include "Platform/Linux/Input/StallGuard.h"

#include <utility>

namespace zephyx {

StallGuard::StallGuard(std::chrono::milliseconds limit, std::function<void()> onStall)
    : limit_(limit),
      onStall_(std::move(onStall)),
      due_(Clock::now() + limit),
      thread_([this] { watch(); }) {}

StallGuard::~StallGuard() {
  {
    const std::lock_guard lock(mutex_);
    isStopping_ = true;
  }
  changed_.notify_one();
  thread_.join();
}

bool StallGuard::beat() {
  const std::lock_guard lock(mutex_);
  due_ = Clock::now() + limit_;
  const bool hadStalled = std::exchange(hasStalled_, false);
  if (hadStalled) changed_.notify_one();
  return hadStalled;
}

void StallGuard::watch() {
  std::unique_lock lock(mutex_);
  while (!isStopping_) {
    if (hasStalled_) {
      changed_.wait(lock);
    } else if (Clock::now() < due_) {
      changed_.wait_until(lock, due_);
    } else {
      hasStalled_ = true;
      onStall_();
    }
  }
}

}  // namespace zephyx
