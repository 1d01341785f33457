#pragma once

#include <xcb/xcb.h>

#include <array>
#include <bitset>
#include <cstdint>
#include <vector>

namespace zephyx {

/// One bit for each X key code.
using KeySet = std::bitset<256>;

/// Which keys stand for which modifier, in the order of the modifier bits: Shift, Lock, Control,
/// Mod1 to Mod5.
class ModifierMap {
 public:
  /// Asks the server; a handful of round trips. Empty when it does not answer.
  static ModifierMap read(xcb_connection_t* connection);

  /// The bit of the modifier that holds Num Lock; 0 when none does.
  std::uint16_t numLockMask() const { return numLockMask_; }
  /// A key that sets the modifier bit; 0 when none does.
  std::uint8_t keyFor(std::uint16_t modifierBit) const;
  /// The keys that are modifiers only while they are held, so without Caps Lock and Num Lock.
  KeySet heldModifierKeys() const;
  /// Caps Lock, Num Lock and what else sets their modifiers.
  KeySet lockKeys() const;

 private:
  bool isLock(std::size_t row) const;

  std::array<std::vector<std::uint8_t>, 8> keys_;
  std::uint16_t numLockMask_ = 0;
};

}  // namespace zephyx
