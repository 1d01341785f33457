#pragma once

#include "Platform/Accessibility.h"

namespace zephyx {

/// X11 lets every program type for the user where the server has its test extension; there is
/// nobody to ask for the permission.
class LinuxAccessibility : public Accessibility {
 public:
  bool isProcessTrusted() const override;
  bool isProcessTrustedWithPrompt() override { return isProcessTrusted(); }
  std::optional<std::string> obstacle() const override;
};

}  // namespace zephyx
