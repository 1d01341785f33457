#pragma once

#include <cstddef>

#include "Platform/Linux/X11.h"

namespace zephyx {

/// The least that a program must do to have what another one copies: no checks, no deadlines, one
/// target. Waits as long as it takes, and throws std::runtime_error when the server is gone. One
/// thread.
class BareReader {
 public:
  BareReader();

  /// Waits for the next copy and fetches it; how many bytes it was.
  std::size_t nextText();
  /// One question to the server and its answer.
  void roundTrip();

 private:
  template <typename Event>
  Event wait(std::uint8_t type);
  XReply<xcb_get_property_reply_t> take();

  X11Connection connection_;
  xcb_window_t window_;
  std::uint8_t selectionEvent_ = 0;
};

}  // namespace zephyx
