#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QEvent>

#include "Tests/Desktop/WaitFor.h"

namespace zephyx {

/// As `waitFor`, with the main loop of this process running meanwhile.
[[nodiscard]] inline bool runUntil(const std::function<bool()>& condition,
                                   std::chrono::milliseconds deadline = std::chrono::seconds(5)) {
  const auto look = [&] {
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    return condition();
  };
  return waitFor(look, deadline);
}

/// For things that must not happen.
[[nodiscard]] inline bool runsWithout(const std::function<bool()>& condition,
                                      std::chrono::milliseconds duration) {
  return !runUntil(condition, duration);
}

inline void runFor(std::chrono::milliseconds duration) {
  (void)runUntil([] { return false; }, duration);
}

}  // namespace zephyx
