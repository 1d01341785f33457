#include "Tests/Desktop/WaitFor.h"

#include <poll.h>

#include <ctime>

namespace zephyx {

bool waitFor(const std::function<bool()>& condition, std::chrono::milliseconds deadline,
             std::chrono::milliseconds interval) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!condition()) {
    if (std::chrono::steady_clock::now() >= end) return condition();
    pass(interval);
  }
  return true;
}

bool holdsFor(const std::function<bool()>& condition, std::chrono::milliseconds duration) {
  return !waitFor([&] { return !condition(); }, duration);
}

void pass(std::chrono::microseconds duration) {
  const auto nanoseconds = std::chrono::nanoseconds(duration).count();
  timespec time{nanoseconds / 1'000'000'000, nanoseconds % 1'000'000'000};
  ppoll(nullptr, 0, &time, nullptr);
}

}  // namespace zephyx
