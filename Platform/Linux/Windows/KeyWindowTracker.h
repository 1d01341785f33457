#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <vector>

#include "Platform/LocalNotificationCenter.h"

namespace zephyx {

class DesktopWatch;
class LinuxWindow;

/// Which of the host's windows has the keyboard, and whether the host is the application in front:
/// one of its windows, or a dialog, is active. As the X server and the window manager say: the
/// toolkit's own notion is no help, it also reports a window as inactive while a held hot key or
/// another program's menu grabs the keyboard. Main thread.
class KeyWindowTracker final : public QObject {
 public:
  KeyWindowTracker(DesktopWatch& watch, LocalNotificationCenter& center);

  void add(LinuxWindow* window) { windows_.push_back(window); }
  void remove(LinuxWindow* window);
  /// To be called when a window has been taken off the screen.
  void windowWasOrderedOut(LinuxWindow* window);

  /// Null when no window of the host has the keyboard.
  LinuxWindow* keyWindow() const { return key_; }
  bool isActive() const { return isActive_; }

 private:
  void update();
  void setKey(LinuxWindow* window);
  void resignActive();
  LinuxWindow* shownWindow(unsigned int nativeId) const;

  DesktopWatch& watch_;
  LocalNotificationCenter& center_;
  std::vector<LinuxWindow*> windows_;
  LinuxWindow* key_ = nullptr;
  bool isActive_ = false;
  QTimer recheck_;
};

}  // namespace zephyx
