#pragma once

#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>

namespace zephyx {

/// A counter in the kernel that one thread raises and another one polls. Any thread.
class EventFd {
 public:
  EventFd() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}
  EventFd(const EventFd&) = delete;
  EventFd& operator=(const EventFd&) = delete;
  ~EventFd() {
    if (descriptor_ >= 0) close(descriptor_);
  }

  int descriptor() const { return descriptor_; }

  /// Makes the descriptor readable.
  void raise() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(descriptor_, &one, sizeof one);
  }
  /// Makes the descriptor unreadable again. Call it before looking at what was announced.
  void lower() const {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto taken = read(descriptor_, &count, sizeof count);
  }

 private:
  int descriptor_;
};

}  // namespace zephyx
