#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>

namespace zephyx {

/// The beginning of a name, for the log: kept without an allocation.
class ShortName {
 public:
  explicit ShortName(std::string_view name) : size_(std::min(name.size(), characters_.size())) {
    std::copy_n(name.begin(), size_, characters_.begin());
  }
  std::string_view text() const { return {characters_.data(), size_}; }

 private:
  std::array<char, 48> characters_;
  std::size_t size_;
};

}  // namespace zephyx
