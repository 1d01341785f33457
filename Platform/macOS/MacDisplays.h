#pragma once

#include "Platform/Displays.h"

namespace zephyx {

/// Displays by Quartz; their wires are the system's "AV services", whose functions are private.
class MacDisplays final : public Displays {
 public:
  std::vector<std::shared_ptr<DisplayChannel>> externalChannels() override;
  std::optional<std::string> channelObstacle() override { return std::nullopt; }
  std::vector<Display> onlineDisplays() override;
  bool setTransferMaximum(std::uint32_t display, double maximum) override;
};

}  // namespace zephyx
