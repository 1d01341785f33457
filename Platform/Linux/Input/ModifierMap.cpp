#include "Platform/Linux/Input/ModifierMap.h"

#include <algorithm>

#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {

constexpr xcb_keysym_t numLock = 0xff7f;

KeySet keysWithSymbol(const xcb_setup_t& setup, const xcb_get_keyboard_mapping_reply_t& mapping,
                      xcb_keysym_t symbol) {
  KeySet keys;
  const auto* symbols = xcb_get_keyboard_mapping_keysyms(&mapping);
  const int count = xcb_get_keyboard_mapping_keysyms_length(&mapping);
  if (mapping.keysyms_per_keycode == 0) return keys;
  for (int i = 0; i < count; ++i) {
    if (symbols[i] != symbol) continue;
    const int key = setup.min_keycode + i / mapping.keysyms_per_keycode;
    keys.set(static_cast<std::size_t>(key));
  }
  return keys;
}

}  // namespace

ModifierMap ModifierMap::read(xcb_connection_t* connection) {
  ModifierMap map;
  const auto* setup = xcb_get_setup(connection);
  const auto keyCount = static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1);
  const auto modifiersCookie = xcb_get_modifier_mapping(connection);
  const auto symbolsCookie = xcb_get_keyboard_mapping(connection, setup->min_keycode, keyCount);
  const XReply<xcb_get_modifier_mapping_reply_t> modifiers(
      xcb_get_modifier_mapping_reply(connection, modifiersCookie, nullptr));
  const XReply<xcb_get_keyboard_mapping_reply_t> symbols(
      xcb_get_keyboard_mapping_reply(connection, symbolsCookie, nullptr));
  if (!modifiers || !symbols) return map;

  const auto numLockKeys = keysWithSymbol(*setup, *symbols, numLock);
  const auto* keys = xcb_get_modifier_mapping_keycodes(modifiers.get());
  const auto perModifier = modifiers->keycodes_per_modifier;
  for (std::size_t row = 0; row < map.keys_.size(); ++row) {
    for (std::size_t i = 0; i < perModifier; ++i) {
      const auto key = keys[row * perModifier + i];
      if (key == 0) continue;
      map.keys_[row].push_back(key);
      if (numLockKeys[key]) map.numLockMask_ |= static_cast<std::uint16_t>(1u << row);
    }
  }
  return map;
}

std::uint8_t ModifierMap::keyFor(std::uint16_t modifierBit) const {
  for (std::size_t row = 0; row < keys_.size(); ++row) {
    if (modifierBit == 1u << row && !keys_[row].empty()) return keys_[row].front();
  }
  return 0;
}

KeySet ModifierMap::heldModifierKeys() const {
  KeySet held;
  for (std::size_t row = 0; row < keys_.size(); ++row) {
    if (isLock(row)) continue;
    for (const auto key : keys_[row]) held.set(key);
  }
  return held;
}

KeySet ModifierMap::lockKeys() const {
  KeySet locks;
  for (std::size_t row = 0; row < keys_.size(); ++row) {
    if (!isLock(row)) continue;
    for (const auto key : keys_[row]) locks.set(key);
  }
  return locks;
}

bool ModifierMap::isLock(std::size_t row) const {
  const auto bit = 1u << row;
  return bit == XCB_MOD_MASK_LOCK || bit == numLockMask_;
}

}  // namespace zephyx
