#pragma once

#include <array>
#include <cstdint>
#include <optional>

namespace zephyx {

/// Identity of a hotkey: stored on disk, registered with the system and sent over channels. The
/// numbers are fixed.
enum class HotkeyID : std::uint32_t {
  togglePopover = 1,
  clipboardPanel = 2,
  translate = 3,
  spelling = 4,
  improve = 5,
  restoreLast = 6,
  trackpadLock = 8,
  keyboardLock = 9,
  micMute = 10,
};

/// Every hotkey, ascending.
inline constexpr std::array allHotkeys{
    HotkeyID::togglePopover, HotkeyID::clipboardPanel, HotkeyID::translate,
    HotkeyID::spelling,      HotkeyID::improve,        HotkeyID::restoreLast,
    HotkeyID::trackpadLock,  HotkeyID::keyboardLock,   HotkeyID::micMute};

constexpr std::uint32_t rawValue(HotkeyID id) {
  return static_cast<std::uint32_t>(id);
}

/// Nothing for a number that names no hotkey.
constexpr std::optional<HotkeyID> hotkeyId(std::int64_t number) {
  for (const auto id : allHotkeys) {
    if (number == rawValue(id)) return id;
  }
  return std::nullopt;
}

}  // namespace zephyx
