#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace zephyx {

using WindowId = std::uint32_t;

/// A window as another program sees it. Frames are in pixels from the top left corner of the root.
struct DesktopWindow {
  WindowId id = 0;
  pid_t pid = 0;
  std::string instance, className, title;
  int x = 0, y = 0, width = 0, height = 0;
  bool viewable = false;
  bool overrideRedirect = false;

  int centerX() const { return x + width / 2; }
  int centerY() const { return y + height / 2; }
};

/// What the X server and the window manager say about the windows on the screen; a witness that
/// shares nothing with the program under test. One thread.
class DesktopWindows {
 public:
  using Predicate = std::function<bool(const DesktopWindow&)>;

  explicit DesktopWindows(const std::string& display);
  DesktopWindows(const DesktopWindows&) = delete;
  DesktopWindows& operator=(const DesktopWindows&) = delete;
  ~DesktopWindows();

  /// The windows that the window manager manages, oldest first.
  std::vector<DesktopWindow> managed() const;
  /// Every window of at least 4 pixels that can be seen, menus and tray icons included.
  std::vector<DesktopWindow> viewable() const;
  DesktopWindow describe(WindowId window) const;
  /// The managed windows in words, for messages.
  std::string description() const;
  std::optional<DesktopWindow> find(const Predicate& predicate) const;

  /// Throws std::runtime_error, naming `what`, when no such window shows up in time.
  DesktopWindow waitForManaged(const std::string& what, const Predicate& predicate,
                               std::chrono::milliseconds deadline = std::chrono::seconds(10)) const;
  /// A viewable managed window whose class (or its instance name) is `className`.
  DesktopWindow waitForClass(const std::string& className) const;

  WindowId active() const;
  WindowId focused() const;
  /// Asks the window manager to bring it to the front, and waits until it is active.
  bool activate(WindowId window) const;
  void close(WindowId window) const;
  bool exists(WindowId window) const;

  std::string textProperty(WindowId window, const std::string& name) const;
  std::vector<std::uint32_t> property32(WindowId window, const std::string& name) const;
  bool hasProperty(WindowId window, const std::string& name) const;
  WindowId root() const { return root_; }
  WindowId selectionOwner(const std::string& selection) const;
  WindowId parentOf(WindowId window) const;
  /// The process behind a window, by the server's own knowledge.
  pid_t processOf(WindowId window) const;
  /// True when another client has the key with these X modifiers: the server refuses it to us.
  bool isGrabbedByOthers(std::uint8_t keyCode, std::uint16_t modifiers) const;
  /// How long the program behind a window takes to answer the window manager's "are you alive?",
  /// which its main thread does; one second when it does not answer within that.
  std::chrono::milliseconds ping(WindowId window) const;
  /// What a part of a window shows, row by row; empty when it cannot be seen.
  std::vector<std::uint32_t> pixels(WindowId window, int x, int y, int width, int height) const;
  /// How many different colours the upper left part of a window shows: 1 before anything is drawn.
  int distinctColors(const DesktopWindow& window) const;

 private:
  std::uint32_t atom(const std::string& name) const;
  void send(WindowId receiver, WindowId window, const std::string& type,
            std::initializer_list<std::uint32_t> data) const;
  void collect(WindowId window, int depth, std::vector<DesktopWindow>& result) const;

  xcb_connection_t* connection_;
  WindowId root_ = 0;
  mutable std::map<std::string, std::uint32_t> atoms_;
};

}  // namespace zephyx
