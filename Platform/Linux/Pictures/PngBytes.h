#pragma once

#include <cstdint>

namespace zephyx {

inline std::uint32_t readBigEndian(const std::uint8_t* from) {
  return std::uint32_t{from[0]} << 24 | std::uint32_t{from[1]} << 16 | std::uint32_t{from[2]} << 8 |
         std::uint32_t{from[3]};
}

inline void writeBigEndian(std::uint32_t value, std::uint8_t* to) {
  to[0] = static_cast<std::uint8_t>(value >> 24);
  to[1] = static_cast<std::uint8_t>(value >> 16);
  to[2] = static_cast<std::uint8_t>(value >> 8);
  to[3] = static_cast<std::uint8_t>(value);
}

/// A chunk's name as it is read from a PNG file.
constexpr std::uint32_t pngName(const char (&name)[5]) {
  std::uint32_t value = 0;
  for (int i = 0; i < 4; ++i) value = value << 8 | static_cast<std::uint8_t>(name[i]);
  return value;
}

}  // namespace zephyx
