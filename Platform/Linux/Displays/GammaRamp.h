#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zephyx {

/// A colour transfer table: what comes out for each level that goes in.
struct GammaRamp {
  std::vector<std::uint16_t> red;
  std::vector<std::uint16_t> green;
  std::vector<std::uint16_t> blue;

  /// What comes out is what goes in.
  static GammaRamp identity(std::size_t size);

  GammaRamp dimmed(double maximum) const;
  /// True when it is `original` at less than its full strength, as far as whole numbers show.
  bool isDimmed(const GammaRamp& original) const;
  bool isBlack() const;
  bool operator==(const GammaRamp&) const = default;
};

}  // namespace zephyx
