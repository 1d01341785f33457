#pragma once

#include <xcb/xcb.h>

#include "Platform/Linux/Input/StallGuard.h"

namespace zephyx {

/// Active grabs of keyboard and pointer on the toolkit's connection, for a window that nobody sees.
/// The server lets go of them when the process ends, a thread does when the main one stands still.
/// On another connection they would keep the toolkit from opening menus. Main thread.
class InputGrab {
 public:
  struct Devices {
    bool keyboard = false;
    bool pointer = false;
  };
  enum class Outcome { taken, busy, impossible };

  InputGrab(xcb_connection_t* connection, Devices devices);
  InputGrab(const InputGrab&) = delete;
  InputGrab& operator=(const InputGrab&) = delete;
  ~InputGrab();

  const Devices& devices() const { return devices_; }
  /// All of the devices or none. Takes back what something else of this process has taken or let go
  /// of meanwhile. An open menu of the toolkit keeps the keyboard.
  Outcome take();
  void letGo();
  /// To be called every few moments. True when the grabs were let go of because it was not.
  bool beat() { return guard_.beat(); }

 private:
  Outcome takeKeyboard();
  Outcome takePointer();
  void ungrab() const;

  xcb_connection_t* connection_;
  const Devices devices_;
  xcb_window_t window_ = XCB_NONE;
  StallGuard guard_;
};

}  // namespace zephyx
