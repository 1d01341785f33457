#pragma once

#include <xcb/xcb.h>
#include <xkbcommon/xkbcommon.h>

#include <cstdint>
#include <memory>
#include <optional>

#include "Platform/Linux/Input/ToolkitEvents.h"

namespace zephyx {

/// The keyboard layouts of the toolkit's X server, always current: fetched when they are first
/// asked for after a change. Main thread.
class XkbKeymap {
 public:
  /// A key, and a layout in which it gives what was asked for.
  struct Key {
    std::uint8_t code = 0;
    std::uint8_t layout = 0;
  };

  XkbKeymap();

  /// What the key gives without modifiers in the layout that is in effect; XKB_KEY_NoSymbol when
  /// nothing.
  xkb_keysym_t symbol(std::uint8_t xKeycode) const;
  /// The first key that gives the symbol without modifiers in the layout in effect, else in any
  /// layout.
  std::optional<Key> keyWithSymbol(xkb_keysym_t symbol) const;

 private:
  struct Unref {
    void operator()(xkb_context* context) const { xkb_context_unref(context); }
    void operator()(xkb_keymap* keymap) const { xkb_keymap_unref(keymap); }
    void operator()(xkb_state* state) const { xkb_state_unref(state); }
  };

  void noticeChange(const xcb_generic_event_t& event);
  bool refresh() const;

  xcb_connection_t* connection_;
  std::uint8_t firstEvent_ = 0;
  std::unique_ptr<xkb_context, Unref> context_;
  mutable std::unique_ptr<xkb_keymap, Unref> keymap_;  // null when it must be fetched
  mutable std::unique_ptr<xkb_state, Unref> state_;    // null when it must be fetched
  ToolkitEvents events_;
};

}  // namespace zephyx
