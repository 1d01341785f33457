#pragma once

#include <sys/eventfd.h>
#include <unistd.h>

#include <cstdint>

#include "Platform/Linux/FileDescriptor.h"

namespace zephyx {

/// A counter in the kernel that one thread raises and another one polls. Any thread.
class EventFd {
 public:
  EventFd() : descriptor_(eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK)) {}

  int descriptor() const { return descriptor_.get(); }

  /// Makes the descriptor readable. A signal handler may call it.
  void raise() const {
    const std::uint64_t one = 1;
    [[maybe_unused]] const auto written = write(descriptor_.get(), &one, sizeof one);
  }
  /// Makes the descriptor unreadable again. Call it before looking at what was announced.
  void lower() const {
    std::uint64_t count = 0;
    [[maybe_unused]] const auto taken = read(descriptor_.get(), &count, sizeof count);
  }

 private:
  FileDescriptor descriptor_;
};

}  // namespace zephyx
