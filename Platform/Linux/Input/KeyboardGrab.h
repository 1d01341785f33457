#pragma once

#include <xcb/xcb.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>

namespace zephyx {

/// The keyboard for the toolkit's windows alone: neither other programs nor the window manager get
/// what is pressed. The server lets go of it when the process ends. Main thread.
class KeyboardGrab {
 public:
  KeyboardGrab();
  KeyboardGrab(const KeyboardGrab&) = delete;
  KeyboardGrab& operator=(const KeyboardGrab&) = delete;
  ~KeyboardGrab();

  /// Each call wants one `letGo`. While another program has the keyboard, tries on for a while.
  /// False when no window of the toolkit is there to get the keys.
  bool hold();
  /// What is still pressed then comes here to its end: repeats of a held key are no news for
  /// others.
  void letGo();

  bool isHeld() const { return isHeld_; }
  /// Nobody wants it any more, but keys are still down.
  bool isLeaving() const { return isHeld_ && holders_ == 0; }

 private:
  enum class Outcome { taken, busy, impossible };

  Outcome grab();
  void tryAgain();
  void releaseWhenIdle();
  void release();

  xcb_connection_t* connection_;
  int holders_ = 0;
  bool isHeld_ = false;
  QTimer retry_;
  QTimer farewell_;
  QElapsedTimer since_;  // of the first attempt, or of the last `letGo`
};

}  // namespace zephyx
