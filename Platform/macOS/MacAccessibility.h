#pragma once

#include "Platform/Accessibility.h"

namespace zephyx {

/// Asked anew each time: the user may take the permission away at any moment. "Trusted" may be
/// stale: after the program was replaced by one with another signature the switch in the settings
/// stays on while the system drops what is posted.
class MacAccessibility final : public Accessibility {
 public:
  bool isProcessTrusted() const override;
  bool isProcessTrustedWithPrompt() override;
  std::optional<std::string> obstacle() const override { return std::nullopt; }
};

}  // namespace zephyx
