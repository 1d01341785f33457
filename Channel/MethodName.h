#pragma once

#include <algorithm>
#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace zephyx {

/// A method's name. Those that are in use fit without an allocation, which is a tenth of what a
/// streamed token costs.
class MethodName {
 public:
  MethodName() = default;
  MethodName(const char* name) : MethodName(std::string_view(name)) {}
  explicit MethodName(std::string_view name) : size_(name.size()) {
    if (size_ <= short_.size()) {
      std::copy_n(name.begin(), size_, short_.begin());
    } else {
      long_ = name;
    }
  }

  std::string_view text() const {
    return {size_ <= short_.size() ? short_.data() : long_.data(), size_};
  }
  operator std::string_view() const { return text(); }
  friend bool operator==(const MethodName& name, std::string_view text) {
    return name.text() == text;
  }

 private:
  std::array<char, 40> short_{};
  std::string long_;
  std::size_t size_ = 0;
};

}  // namespace zephyx
