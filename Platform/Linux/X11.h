#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <initializer_list>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace zephyx {

struct FreeDeleter {
  void operator()(void* memory) const { std::free(memory); }
};

/// A reply, event or error that the X library allocated.
template <typename T>
using XReply = std::unique_ptr<T, FreeDeleter>;

/// The source indication of EWMH messages: the user asked for it, so no focus-stealing prevention.
inline constexpr std::uint32_t fromPager = 2;

/// A connection to the X server with the handful of questions that every service asks. Used by one
/// thread. Each question is one round trip.
class X11Connection {
 public:
  /// Opens a connection of its own to the default display; check `isValid`.
  X11Connection();
  /// Borrows a connection that outlives this object (the toolkit's).
  explicit X11Connection(xcb_connection_t* borrowed);
  X11Connection(const X11Connection&) = delete;
  X11Connection& operator=(const X11Connection&) = delete;
  ~X11Connection();

  xcb_connection_t* get() const { return connection_; }
  xcb_window_t root() const { return screen_ ? screen_->root : XCB_NONE; }
  const xcb_screen_t* screen() const { return screen_; }
  bool isValid() const { return screen_ && !xcb_connection_has_error(connection_); }

  /// Interned once, then remembered.
  xcb_atom_t atom(const std::string& name);
  std::string atomName(xcb_atom_t atom);

  /// A property of any type, whole; empty when it is missing or the window is gone.
  std::vector<std::uint8_t> property(xcb_window_t window, xcb_atom_t property,
                                     std::uint32_t maximumBytes = 16u << 20);
  /// The property as 32-bit items (windows, atoms, cardinals).
  std::vector<std::uint32_t> property32(xcb_window_t window, const std::string& name);
  std::string propertyText(xcb_window_t window, const std::string& name);

  /// The window that the window manager calls active, XCB_NONE when there is none.
  xcb_window_t activeWindow();
  /// Sends the window manager a client message about `window`. No round trip.
  void askWindowManager(xcb_window_t window, const std::string& type,
                        std::initializer_list<std::uint32_t> data);
  /// The process that made `window`'s connection, as the server knows it; 0 when unknown.
  int processOfWindow(xcb_window_t window);

 private:
  void setUp();

  xcb_connection_t* connection_ = nullptr;
  bool owned_ = false;
  const xcb_screen_t* screen_ = nullptr;
  std::unordered_map<std::string, xcb_atom_t> atoms_;
  std::unordered_map<xcb_atom_t, std::string> atomNames_;
};

}  // namespace zephyx
