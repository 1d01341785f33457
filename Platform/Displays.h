#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// The wire between the computer and one external display. It may outlive the display's connection;
/// writes fail then.
class DisplayChannel {
 public:
  virtual ~DisplayChannel() = default;

  /// Writes to a chip of the display, from `dataAddress` on. 0 when the display has taken it, else
  /// what the system says. Waits for the display: any thread but the main one.
  virtual std::int32_t writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                                BytesView bytes) = 0;
};

/// One display as it is now; not to be kept.
struct Display {
  std::uint32_t id = 0;
  bool isBuiltin = false;
  bool operator==(const Display&) const = default;
};

/// What displays there are, and what can be done to their pictures. Main thread.
class Displays {
 public:
  virtual ~Displays() = default;

  /// Of the external displays that are connected now, never of a built-in panel. Displays and
  /// systems without such a wire have none.
  virtual std::vector<std::shared_ptr<DisplayChannel>> externalChannels() = 0;

  /// Why the wire of a display that has one cannot be used, in a sentence for the user; nothing
  /// when all can.
  virtual std::optional<std::string> channelObstacle() = 0;

  virtual std::vector<Display> onlineDisplays() = 0;

  /// Red, green and blue go from black to this share of their full strength, from 0 to 1; 1 is the
  /// picture as the user has it. False when there is no such display or it has no colour transfer
  /// table. Ends with the program.
  virtual bool setTransferMaximum(std::uint32_t display, double maximum) = 0;
};

}  // namespace zephyx
