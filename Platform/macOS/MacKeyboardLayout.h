#pragma once

#include <cstdint>
#include <string>

#include "Platform/HotKeys.h"

namespace zephyx {

/// The layout in force; with an input method, the layout beneath it. Main thread: the system's
/// input sources are checked for that.
class MacKeyboardLayout final : public KeyboardLayout {
 public:
  std::string character(std::uint32_t keyCode) const override;
  std::string uppercased(const std::string& text) const override;
  std::string lowercased(const std::string& text) const override;
};

}  // namespace zephyx
