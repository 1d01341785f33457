#pragma once

#include "Platform/EventTap.h"

namespace zephyx {

/// Filtering taps at the session, served by the main run loop in its common modes.
class MacEventTaps final : public EventTaps {
 public:
  EventTapCreation createEventTap(std::uint64_t mask, EventTapCallbacks callbacks) override;
};

}  // namespace zephyx
