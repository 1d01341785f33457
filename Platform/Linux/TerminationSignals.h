#pragma once

#include <functional>
#include <memory>

#include "Platform/Linux/EventFd.h"

class QSocketNotifier;

namespace zephyx {

/// Calls `handler` on the main loop when the process is asked to end (SIGTERM, SIGINT, SIGHUP). One
/// at a time.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> handler);
  ~TerminationSignals();

 private:
  std::function<void()> handler_;
  EventFd raised_;
  std::unique_ptr<QSocketNotifier> notifier_;
};

}  // namespace zephyx
