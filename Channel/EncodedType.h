#pragma once

#include <cstdint>

namespace zephyx {

/// The byte in front of every encoded value.
enum class EncodedType : std::uint8_t {
  null = 0,
  yes = 1,
  no = 2,
  int32 = 3,
  int64 = 4,
  bigInteger = 5,
  float64 = 6,
  string = 7,
  uint8List = 8,
  int32List = 9,
  int64List = 10,
  float64List = 11,
  list = 12,
  map = 13,
  float32List = 14,
};

/// The first byte of a size, when it is not the size itself.
inline constexpr std::uint8_t size16Follows = 254;
inline constexpr std::uint8_t size32Follows = 255;

}  // namespace zephyx
