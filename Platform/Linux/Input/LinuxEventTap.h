#pragma once

#include <xcb/xcb.h>

#include <QtCore/QTimer>
#include <functional>
#include <memory>

#include "Platform/EventTap.h"
#include "Platform/Linux/Input/InputGrab.h"
#include "Platform/Linux/Input/KeyRepeat.h"
#include "Platform/Linux/Input/SessionPauses.h"
#include "Platform/Linux/Input/ToolkitEvents.h"

namespace zephyx {

/// A grab that is held on to. A main thread that stands still disables it, another program that
/// gets the device all the same too; it ends when the computer is about to sleep or the session is
/// locked, since a locked screen needs the keyboard.
class LinuxEventTap final : public EventTap {
 public:
  using Grab = std::unique_ptr<InputGrab>;

  /// `grab` has been taken; `leave` gets it back in the end.
  LinuxEventTap(Grab grab, EventTapCallbacks callbacks, std::function<void(Grab)> leave);
  ~LinuxEventTap() override;

  bool enable() override;

 private:
  bool filter(const xcb_generic_event_t& event);
  void reportPress(const xcb_key_press_event_t& press);
  void check();
  void disable(EventType reason);
  void end();

  Grab grab_;
  const EventTapCallbacks callbacks_;
  const std::function<void(Grab)> leave_;
  bool isEnabled_ = true;
  KeyRepeat repeat_;
  QTimer timer_;
  ToolkitEvents events_;
  SessionPauses pauses_;
};

}  // namespace zephyx
