#include "Platform/Linux/Input/LayoutLock.h"

#include "Platform/Linux/Input/Xkb.h"
#include "Platform/Linux/X11.h"

namespace zephyx {

LayoutLock::LayoutLock(xcb_connection_t* connection) : connection_(connection) {
  const XReply<xcb_xkb_get_state_reply_t> state(xcb_xkb_get_state_reply(
      connection, xcb_xkb_get_state(connection, XCB_XKB_ID_USE_CORE_KBD), nullptr));
  if (state) usersLayout_ = state->lockedGroup;
}

LayoutLock::~LayoutLock() {
  choose(usersLayout_);
}

void LayoutLock::choose(std::optional<std::uint8_t> layout) {
  if (!layout) layout = usersLayout_;
  if (!layout || !usersLayout_) return;
  xcb_xkb_latch_lock_state(connection_, XCB_XKB_ID_USE_CORE_KBD, 0, 0, 1, *layout, 0, 0, 0);
}

}  // namespace zephyx
