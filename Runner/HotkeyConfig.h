#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>

#include "Platform/BinaryMessenger.h"
#include "Runner/HotkeyId.h"

namespace zephyx {

/// A key combination: macOS virtual key code and Carbon modifier flags. Bits without a meaning are
/// carried along.
struct HotkeyConfig {
  std::uint32_t keyCode = 0;
  std::uint32_t modifiers = 0;
  bool operator==(const HotkeyConfig&) const = default;
};

using HotkeyTable = std::map<HotkeyID, HotkeyConfig>;

/// The stored form: a JSON object from decimal ids to objects with "keyCode" and "modifiers".
Bytes encodeHotkeyTable(const HotkeyTable& table);

/// Nothing unless the bytes are a document of that shape; ids that name no hotkey are left out.
std::optional<HotkeyTable> decodeHotkeyTable(BytesView bytes);

/// Cocoa event modifier flags to Carbon flags and back; flags without a counterpart are dropped.
std::uint32_t carbonModifiers(std::uint64_t eventModifiers);
std::uint64_t eventModifiers(std::uint32_t carbonModifiers);

}  // namespace zephyx
