#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace zephyx {

/// Acts when a thread stands still that should be heard of every few moments.
class StallGuard {
 public:
  /// `onStall` runs on a thread of its own when there was no beat for `limit`, and holds up the
  /// next beat until it is done.
  StallGuard(std::chrono::milliseconds limit, std::function<void()> onStall);
  StallGuard(const StallGuard&) = delete;
  StallGuard& operator=(const StallGuard&) = delete;
  ~StallGuard();

  /// True when `onStall` has run since the last beat.
  bool beat();

 private:
  using Clock = std::chrono::steady_clock;

  void watch();

  const std::chrono::milliseconds limit_;
  const std::function<void()> onStall_;
  std::mutex mutex_;
  std::condition_variable changed_;
  Clock::time_point due_;
  bool hasStalled_ = false;
  bool isStopping_ = false;
  std::thread thread_;
};

}  // namespace zephyx
