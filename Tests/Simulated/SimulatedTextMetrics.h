#pragma once

#include <algorithm>
#include <cmath>

#include "Platform/TextMetrics.h"

namespace zephyx {

/// A font in which every character is half as wide as it is high.
class SimulatedTextMetrics final : public TextMetrics {
 public:
  Size size(const std::string& text, const Font& font) const override {
    const auto characters = std::count_if(text.begin(), text.end(), [](char byte) {
      return (static_cast<unsigned char>(byte) & 0xC0) != 0x80;  // not inside a UTF-8 sequence
    });
    return {std::ceil(static_cast<double>(characters) * font.size / 2),
            std::ceil(font.size * 1.25)};
  }
};

}  // namespace zephyx
