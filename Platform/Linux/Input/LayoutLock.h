#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <optional>

namespace zephyx {

/// While a chord is synthesized: the keyboard's layout is what the chord needs, and in the end the
/// user's again, whatever the chord's own modifiers switch. Main thread.
class LayoutLock {
 public:
  /// Asks the server which layout the user has chosen.
  explicit LayoutLock(xcb_connection_t* connection);
  LayoutLock(const LayoutLock&) = delete;
  LayoutLock& operator=(const LayoutLock&) = delete;
  /// Chooses it again.
  ~LayoutLock();

  /// Of the keyboard's layouts, from 0; nothing for the user's.
  void choose(std::optional<std::uint8_t> layout);

 private:
  xcb_connection_t* connection_;
  std::optional<std::uint8_t> usersLayout_;  ///< nothing when the server does not tell
};

}  // namespace zephyx
