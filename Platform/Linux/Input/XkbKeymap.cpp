#include "Platform/Linux/Input/XkbKeymap.h"

#include <xkbcommon/xkbcommon-x11.h>

#include "Platform/Linux/Input/Xkb.h"

namespace zephyx {

XkbKeymap::XkbKeymap()
    : connection_(toolkitConnection()), events_([this](const xcb_generic_event_t& event) {
        noticeChange(event);
        return false;
      }) {
  if (!connection_) return;
  std::uint16_t major = 0;
  std::uint16_t minor = 0;
  // The toolkit has selected the extension's events on this connection already.
  if (xkb_x11_setup_xkb_extension(
          connection_, XKB_X11_MIN_MAJOR_XKB_VERSION, XKB_X11_MIN_MINOR_XKB_VERSION,
          XKB_X11_SETUP_XKB_EXTENSION_NO_FLAGS, &major, &minor, &firstEvent_, nullptr)) {
    context_.reset(xkb_context_new(XKB_CONTEXT_NO_FLAGS));
  }
}

void XkbKeymap::noticeChange(const xcb_generic_event_t& event) {
  if (!context_ || eventTypeOf(event) != firstEvent_) return;
  // All events of the extension share one number; the kind follows in the second byte.
  switch (event.pad0) {
    case XCB_XKB_NEW_KEYBOARD_NOTIFY:
    case XCB_XKB_MAP_NOTIFY:
      keymap_.reset();
      state_.reset();
      break;
    case XCB_XKB_STATE_NOTIFY:
      state_.reset();
      break;
    default:
      break;
  }
}

bool XkbKeymap::refresh() const {
  if (!context_) return false;
  if (keymap_ && state_) return true;
  const auto device = xkb_x11_get_core_keyboard_device_id(connection_);
  if (device < 0) return false;
  if (!keymap_) {
    keymap_.reset(xkb_x11_keymap_new_from_device(context_.get(), connection_, device,
                                                 XKB_KEYMAP_COMPILE_NO_FLAGS));
    if (!keymap_) return false;
  }
  state_.reset(xkb_x11_state_new_from_device(keymap_.get(), connection_, device));
  return state_ != nullptr;
}

xkb_keysym_t XkbKeymap::symbol(std::uint8_t xKeycode) const {
  if (!refresh()) return XKB_KEY_NoSymbol;
  // Keys with fewer layouts than the keyboard wrap around, as in the server.
  const auto layout = xkb_state_key_get_layout(state_.get(), xKeycode);
  if (layout == XKB_LAYOUT_INVALID) return XKB_KEY_NoSymbol;
  const xkb_keysym_t* symbols = nullptr;
  const int count = xkb_keymap_key_get_syms_by_level(keymap_.get(), xKeycode, layout, 0, &symbols);
  return count > 0 ? symbols[0] : XKB_KEY_NoSymbol;
}

std::optional<XkbKeymap::Key> XkbKeymap::keyWithSymbol(xkb_keysym_t symbol) const {
  if (!refresh()) return std::nullopt;
  const auto first = xkb_keymap_min_keycode(keymap_.get());
  const auto last = xkb_keymap_max_keycode(keymap_.get());
  const auto keyIn = [&](xkb_layout_index_t layout) -> std::optional<Key> {
    for (auto key = first; key <= last; ++key) {
      const xkb_keysym_t* symbols = nullptr;
      if (xkb_keymap_key_get_syms_by_level(keymap_.get(), key, layout, 0, &symbols) == 1 &&
          symbols[0] == symbol)
        return Key{static_cast<std::uint8_t>(key), static_cast<std::uint8_t>(layout)};
    }
    return std::nullopt;
  };
  const auto inEffect = xkb_state_serialize_layout(state_.get(), XKB_STATE_LAYOUT_EFFECTIVE);
  if (const auto key = keyIn(inEffect)) return key;
  for (xkb_layout_index_t layout = 0; layout < xkb_keymap_num_layouts(keymap_.get()); ++layout) {
    if (const auto key = keyIn(layout)) return key;
  }
  return std::nullopt;
}

}  // namespace zephyx
