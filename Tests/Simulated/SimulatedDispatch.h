#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/SerialQueue.h"

namespace zephyx {

class SimulatedFaults;

/// Queues and timers in virtual time, all run by one real thread in the order in which they are
/// due. Time moves only when a test says so.
class SimulatedDispatch final : public Dispatch {
 public:
  explicit SimulatedDispatch(SimulatedFaults& faults);
  ~SimulatedDispatch() override;

  DispatchQueue& mainQueue() override { return mainQueue_; }
  DispatchQueue& globalQueue() override { return globalQueue_; }
  DispatchQueue& serialQueue(const std::string& label, QualityOfService) override {
    requireMainThread("serialQueue");
    return serialQueues_.try_emplace(label, globalQueue_).first->second;
  }
  bool isMainThread() const override { return isMainThread_; }
  Registration scheduleRepeatingTimer(double interval, std::function<void()> block) override;
  double wallClock() const override;
  double mediaClock() const override { return static_cast<double>(now_) / 1e6; }

  /// Runs everything that becomes due within `seconds`, new work included. Goes further when a
  /// block off the main thread is held up for longer: what is to happen meanwhile must be
  /// scheduled before.
  void advance(double seconds);
  /// Runs what is due now.
  void settle() { advance(0); }
  /// Advances from one piece of work to the next until `condition` holds; false when it does not
  /// within `deadline` seconds.
  bool runUntil(const std::function<bool()>& condition, double deadline);
  /// Sets the wall clock, in seconds since 1970; it goes on from there.
  void setWallClock(double seconds);

  /// For the machine: holds up the current block of a queue off the main thread. Everything else
  /// goes on.
  void waitOnGlobalQueue(double seconds);
  /// For the machine: a fault when not called on the main thread, or when called on it.
  void requireMainThread(const char* what) const;
  void forbidMainThread(const char* what) const;

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
    void asyncAfter(double seconds, std::function<void()> block) override;

   private:
    SimulatedDispatch& dispatch_;
    bool isMain_;
  };

  struct Timer;

  Key schedule(Microseconds delay, Work work);
  void scheduleTimer(const std::shared_ptr<Timer>& timer);
  bool runNext(Microseconds until);

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
