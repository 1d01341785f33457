#pragma once

#include <cmath>
#include <cstdint>
#include <map>

#include "Platform/Dispatch.h"
#include "Platform/SerialQueue.h"
#include "Tests/Simulated/SimulatedFaults.h"

namespace zephyx {

/// Queues and timers in virtual time, all run by one real thread in the order in which they are
/// due. Time moves only when a test says so.
class SimulatedDispatch final : public Dispatch {
 public:
  explicit SimulatedDispatch(SimulatedFaults& faults) : faults_(faults) {}

  DispatchQueue& mainQueue() override { return mainQueue_; }
  DispatchQueue& globalQueue() override { return globalQueue_; }
  DispatchQueue& serialQueue(const std::string& label, QualityOfService) override {
    requireMainThread("serialQueue");
    return serialQueues_.try_emplace(label, globalQueue_).first->second;
  }
  bool isMainThread() const override { return isMainThread_; }
  Registration scheduleRepeatingTimer(double interval, std::function<void()> block) override {
    requireMainThread("scheduleRepeatingTimer");
    auto timer = std::make_shared<Timer>(Timer{toMicroseconds(interval), std::move(block), {}});
    scheduleTimer(timer);
    return Registration([this, timer] {
      timer->isAlive = false;
      work_.erase(timer->key);
    });
  }
  double wallClock() const override { return wallClockAtZero_ + static_cast<double>(now_) / 1e6; }
  double mediaClock() const override { return static_cast<double>(now_) / 1e6; }

  /// Runs everything that becomes due within `seconds`, new work included. Goes further when a
  /// block off the main thread is held up for longer: what is to happen meanwhile must be
  /// scheduled before.
  void advance(double seconds) {
    const auto until = now_ + toMicroseconds(seconds);
    while (runNext(until)) {
    }
    now_ = std::max(now_, until);
  }
  /// Runs what is due now.
  void settle() { advance(0); }
  /// Advances from one piece of work to the next until `condition` holds; false when it does not
  /// within `deadline` seconds.
  bool runUntil(const std::function<bool()>& condition, double deadline) {
    const auto until = now_ + toMicroseconds(deadline);
    while (!condition()) {
      if (runNext(until)) continue;
      now_ = std::max(now_, until);
      return condition();
    }
    return true;
  }
  /// Sets the wall clock, in seconds since 1970; it goes on from there.
  void setWallClock(double seconds) {
    wallClockAtZero_ = seconds - static_cast<double>(now_) / 1e6;
  }

  /// For the machine: holds up the current block of a queue off the main thread. Everything else
  /// goes on.
  void waitOnGlobalQueue(double seconds) {
    forbidMainThread("waiting for another program");
    advance(seconds);
  }
  /// For the machine: a fault when not called on the main thread, or when called on it.
  void requireMainThread(const char* what) const {
    if (!isMainThread_) faults_.add(std::string(what) + " off the main thread");
  }
  void forbidMainThread(const char* what) const {
    if (isMainThread_) faults_.add(std::string(what) + " on the main thread");
  }

 private:
  using Microseconds = std::int64_t;
  using Key = std::pair<Microseconds, std::uint64_t>;

  struct Work {
    bool onMainThread = true;
    std::function<void()> block;
  };

  class Queue final : public DispatchQueue {
   public:
    Queue(SimulatedDispatch& dispatch, bool isMain) : dispatch_(dispatch), isMain_(isMain) {}
    void async(std::function<void()> block) override { asyncAfter(0, std::move(block)); }
    void asyncAfter(double seconds, std::function<void()> block) override {
      dispatch_.schedule(toMicroseconds(seconds), {isMain_, std::move(block)});
    }

   private:
    SimulatedDispatch& dispatch_;
    bool isMain_;
  };

  struct Timer {
    Microseconds interval;
    std::function<void()> block;
    Key key;
    bool isAlive = true;
  };

  static Microseconds toMicroseconds(double seconds) { return std::llround(seconds * 1e6); }

  Key schedule(Microseconds delay, Work work) {
    const Key key{now_ + std::max<Microseconds>(delay, 0), sequence_++};
    work_.emplace(key, std::move(work));
    return key;
  }
  void scheduleTimer(const std::shared_ptr<Timer>& timer) {
    timer->key = schedule(timer->interval, {true, [this, timer] {
                                              timer->block();
                                              if (timer->isAlive) scheduleTimer(timer);
                                            }});
  }
  bool runNext(Microseconds until) {
    const auto next = work_.begin();
    if (next == work_.end() || next->first.first > until) return false;
    now_ = std::max(now_, next->first.first);
    const auto work = std::move(next->second);
    work_.erase(next);
    const bool wasMainThread = std::exchange(isMainThread_, work.onMainThread);
    work.block();
    isMainThread_ = wasMainThread;
    return true;
  }

  SimulatedFaults& faults_;
  Queue mainQueue_{*this, true};
  Queue globalQueue_{*this, false};
  std::map<std::string, SerialQueue> serialQueues_;
  std::map<Key, Work> work_;
  std::uint64_t sequence_ = 0;
  Microseconds now_ = 0;
  double wallClockAtZero_ = 1'700'000'000;
  bool isMainThread_ = true;
};

}  // namespace zephyx
