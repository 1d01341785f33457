#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zephyx {
namespace utf8 {

constexpr std::uint64_t highBits = 0x8080808080808080;

template <typename Word>
Word load(const char* text) {
  Word word;
  std::memcpy(&word, text, sizeof word);
  return word;
}

/// For keys, names and the like; the words overlap where the size is no multiple of theirs.
inline bool isShortAscii(std::string_view text) {
  const char* begin = text.data();
  const std::size_t size = text.size();
  std::uint64_t seen = 0;
  if (size >= 8) {
    for (std::size_t i = 0; i + 8 < size; i += 8) seen |= load<std::uint64_t>(begin + i);
    seen |= load<std::uint64_t>(begin + size - 8);
  } else if (size >= 4) {
    seen = load<std::uint32_t>(begin) | load<std::uint32_t>(begin + size - 4);
  } else {
    for (const char c : text) seen |= static_cast<unsigned char>(c);
  }
  return (seen & highBits) == 0;
}

bool isValid(std::string_view text);

}  // namespace utf8

/// True for well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF, no
/// truncated sequence at the end.
inline bool isValidUtf8(std::string_view text) {
  return (text.size() <= 16 && utf8::isShortAscii(text)) || utf8::isValid(text);
}

}  // namespace zephyx
