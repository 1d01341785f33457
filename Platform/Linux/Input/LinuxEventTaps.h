#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <memory>

#include "Platform/EventTap.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Linux/Input/InputGrab.h"

namespace zephyx {

/// Active grabs as taps; one at a time.
class LinuxEventTaps final : public EventTaps {
 public:
  LinuxEventTaps();

  EventTapCreation createEventTap(std::uint64_t mask, EventTapCallbacks callbacks) override;

 private:
  /// What is still pressed ends here: repeats of a held key are no news for others.
  void leave(std::unique_ptr<InputGrab> grab);
  void letGoWhenIdle();

  std::unique_ptr<InputGrab> leaving_;
  QElapsedTimer since_;
  QTimer timer_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
