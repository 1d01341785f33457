#include "Tests/Simulated/SimulatedDispatch.h"

#include <cmath>
#include <memory>
#include <string>

#include "Tests/Simulated/SimulatedFaults.h"

namespace zephyx {
namespace {
std::int64_t toMicroseconds(double seconds) {
  return std::llround(seconds * 1e6);
}
}  // namespace

struct SimulatedDispatch::Timer {
  Microseconds interval;
  std::function<void()> block;
  Key key;
  bool isAlive = true;
};

SimulatedDispatch::SimulatedDispatch(SimulatedFaults& faults) : faults_(faults) {}
SimulatedDispatch::~SimulatedDispatch() = default;

void SimulatedDispatch::Queue::asyncAfter(double seconds, std::function<void()> block) {
  dispatch_.schedule(toMicroseconds(seconds), {isMain_, std::move(block)});
}

SimulatedDispatch::Key SimulatedDispatch::schedule(Microseconds delay, Work work) {
  const Key key{now_ + std::max<Microseconds>(delay, 0), sequence_++};
  work_.emplace(key, std::move(work));
  return key;
}

Registration SimulatedDispatch::scheduleRepeatingTimer(double interval,
                                                       std::function<void()> block) {
  requireMainThread("scheduleRepeatingTimer");
  auto timer = std::make_shared<Timer>(Timer{toMicroseconds(interval), std::move(block), {}});
  scheduleTimer(timer);
  return Registration([this, timer] {
    timer->isAlive = false;
    work_.erase(timer->key);
  });
}

void SimulatedDispatch::scheduleTimer(const std::shared_ptr<Timer>& timer) {
  timer->key = schedule(timer->interval, {true, [this, timer] {
                                            timer->block();
                                            if (timer->isAlive) scheduleTimer(timer);
                                          }});
}

double SimulatedDispatch::wallClock() const {
  return wallClockAtZero_ + static_cast<double>(now_) / 1e6;
}

void SimulatedDispatch::setWallClock(double seconds) {
  wallClockAtZero_ = seconds - static_cast<double>(now_) / 1e6;
}

bool SimulatedDispatch::runNext(Microseconds until) {
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

void SimulatedDispatch::advance(double seconds) {
  const auto until = now_ + toMicroseconds(seconds);
  while (runNext(until)) {
  }
  now_ = std::max(now_, until);
}

bool SimulatedDispatch::runUntil(const std::function<bool()>& condition, double deadline) {
  const auto until = now_ + toMicroseconds(deadline);
  while (!condition()) {
    if (runNext(until)) continue;
    now_ = std::max(now_, until);
    return condition();
  }
  return true;
}

void SimulatedDispatch::waitOnGlobalQueue(double seconds) {
  forbidMainThread("waiting for another program");
  advance(seconds);
}

void SimulatedDispatch::requireMainThread(const char* what) const {
  if (!isMainThread_) faults_.add(std::string(what) + " off the main thread");
}

void SimulatedDispatch::forbidMainThread(const char* what) const {
  if (isMainThread_) faults_.add(std::string(what) + " on the main thread");
}

}  // namespace zephyx
