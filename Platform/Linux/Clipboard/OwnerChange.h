#pragma once

#include <xcb/xcb.h>

#include <cstdint>

namespace zephyx {

/// The server's word that a selection has a new owner.
struct OwnerChange {
  xcb_window_t owner = XCB_NONE;
  xcb_timestamp_t time = XCB_CURRENT_TIME;
  std::uint32_t sequence = 0;  ///< of the last request of ours that the server had carried out then
  bool isOwn = false;          ///< the host took the selection or gave it up
};

/// Compares sequence numbers or times of the server, which wrap around.
inline bool isLater(std::uint32_t one, std::uint32_t other) {
  return static_cast<std::int32_t>(one - other) > 0;
}

/// True when one program's connection made both windows.
inline bool haveSameClient(xcb_connection_t* connection, xcb_window_t one, xcb_window_t other) {
  const auto clientBits = ~xcb_get_setup(connection)->resource_id_mask;
  return one != XCB_NONE && (one & clientBits) == (other & clientBits);
}

}  // namespace zephyx
