#pragma once

#include <chrono>
#include <string>
#include <vector>

#include "Platform/Linux/X11.h"

class QWindow;

namespace zephyx {

class DesktopWatch;

/// What is asked of the window manager about our windows, over the toolkit's connection so that
/// requests and mapping keep their order. Main thread.
class WindowHints {
 public:
  explicit WindowHints(DesktopWatch& watch);

  /// States (names of atoms) for a window that is about to be mapped on the current desktop.
  void prepareToMap(const QWindow& window, const std::vector<std::string>& states);
  /// Changes a state of a mapped window.
  void setState(const QWindow& window, const std::string& state, bool on);
  void moveToCurrentDesktop(const QWindow& window);
  /// Gives a mapped window the keyboard, as a pager does: focus-stealing prevention lets it pass.
  void activate(const QWindow& window);
  /// True while a request for the keyboard may still be on its way.
  bool hasJustActivated() const;

 private:
  bool hasWindowManager();

  DesktopWatch& watch_;
  X11Connection connection_;
  std::chrono::steady_clock::time_point lastActivation_;
};

}  // namespace zephyx
