#pragma once

#include <cctype>
#include <string_view>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Bytes from hexadecimal pairs; blanks are skipped.
inline Bytes hex(std::string_view text) {
  Bytes bytes;
  std::string pair;
  for (const char c : text) {
    if (std::isspace(static_cast<unsigned char>(c))) continue;
    pair += c;
    if (pair.size() == 2) {
      bytes.push_back(static_cast<std::uint8_t>(std::stoi(pair, nullptr, 16)));
      pair.clear();
    }
  }
  return bytes;
}

/// The parts one after the other.
template <typename... Parts>
Bytes joined(const Parts&... parts) {
  Bytes bytes;
  (bytes.insert(bytes.end(), parts.begin(), parts.end()), ...);
  return bytes;
}

}  // namespace zephyx
