#include "Tests/Desktop/WaitFor.h"

#include <poll.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>

namespace zephyx {
namespace {

bool happensWithin(const std::function<bool()>& condition, std::chrono::milliseconds duration,
                   std::chrono::milliseconds interval) {
  const auto end = std::chrono::steady_clock::now() + duration;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return condition();
    pass(interval);
  }
  return true;
}

}  // namespace

int patience() {
  const char* value = std::getenv("ZEPHYX_TEST_PATIENCE");
  return value ? std::clamp(std::atoi(value), 1, 100) : 1;  // NOLINT(cert-err34-c): a number or 1
}

bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds deadline,
             std::chrono::milliseconds interval) {
  return happensWithin(condition, deadline * patience(), interval);
}

bool holdsFor(const std::function<bool()>& condition, std::chrono::milliseconds duration) {
  return !happensWithin([&] { return !condition(); }, duration, std::chrono::milliseconds(2));
}

void pass(std::chrono::microseconds duration) {
  const auto nanoseconds = std::chrono::nanoseconds(duration).count();
  timespec time{nanoseconds / 1'000'000'000, nanoseconds % 1'000'000'000};
  ppoll(nullptr, 0, &time, nullptr);
}

}  // namespace zephyx
