#pragma once

#include "Platform/HotKeys.h"
#include "Platform/Linux/Input/XkbKeymap.h"

namespace zephyx {

class LinuxKeyboardLayout : public KeyboardLayout {
 public:
  std::string character(std::uint32_t keyCode) const override;
  std::string uppercased(const std::string& text) const override;
  std::string lowercased(const std::string& text) const override;

 private:
  XkbKeymap keymap_;
};

}  // namespace zephyx
