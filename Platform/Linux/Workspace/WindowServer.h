#pragma once

#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

#include "Platform/Linux/Workspace/DesktopEntries.h"
#include "Platform/Linux/X11.h"

namespace zephyx {

/// Questions and requests about other programs' windows, on a connection of its own. Any thread.
class WindowServer {
 public:
  WindowServer();

  /// A window and the process that made it: the server gives a closed window's number to the next
  /// program that comes.
  struct WindowOfProcess {
    xcb_window_t window = XCB_NONE;
    int process = 0;
  };

  /// The window that the window manager calls active; XCB_NONE for a moment between two windows.
  xcb_window_t activeWindow();
  /// The process behind a window; empty when the window is gone, 0 when the process is unknown.
  std::optional<int> processOf(xcb_window_t window);
  /// The uppermost managed window of a process; XCB_NONE when it has none.
  xcb_window_t topWindowOf(int process);
  WindowClass classOf(xcb_window_t window);
  /// The pictures of `_NET_WM_ICON`: width, height and ARGB pixels, one after the other.
  std::vector<std::uint32_t> iconsOf(WindowOfProcess window);

  /// True while the window is active and it, or a window inside it, has the keyboard. Without a
  /// window: while any window of the process is active.
  bool isInFront(WindowOfProcess window);
  /// Asks the window manager to bring the window to the front, from its icon and its desktop
  /// where needed; without a window, the uppermost one of the process. False when there is none.
  bool activate(WindowOfProcess window);

  xcb_atom_t atom(const char* name);
  xcb_window_t root() const { return x11_.root(); }

 private:
  std::optional<int> processOfLocked(xcb_window_t window);
  xcb_window_t topWindowOfLocked(int process);
  bool existsLocked(WindowOfProcess window);
  bool hasKeyboardLocked(xcb_window_t window);
  xcb_timestamp_t serverTimeLocked();
  std::uint32_t cardinalLocked(xcb_window_t window, const char* name, std::uint32_t otherwise);

  std::mutex mutex_;
  X11Connection x11_;
  xcb_window_t clockWindow_ = XCB_NONE;
};

}  // namespace zephyx
