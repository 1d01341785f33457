#pragma once

#include <cstdint>

#include "Platform/Events.h"

namespace zephyx {

/// Posts where the keyboard's own events enter the session. Needs the Accessibility permission.
class MacEventPoster final : public EventPoster {
 public:
  bool postKey(std::uint16_t keyCode, std::uint64_t modifierFlags) override;
};

}  // namespace zephyx
