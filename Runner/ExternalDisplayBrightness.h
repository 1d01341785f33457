#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Registration.h"

namespace zephyx {

class Dispatch;
class DispatchQueue;
class DisplayChannel;
class Displays;
class Platform;
class UserDefaults;

/// The brightness of all external displays as one level from 0 to 1. The upper part is the
/// displays' own backlight, by DDC/CI; below it their backlight is at its least, and the picture is
/// dimmed. Main thread.
class ExternalDisplayBrightness {
 public:
  using DdcPacket = std::array<std::uint8_t, 6>;

  static ExternalDisplayBrightness& shared();
  explicit ExternalDisplayBrightness(Platform& platform);

  /// Finds the displays whose backlight can be set.
  void rescan();
  /// Why the backlight of a display cannot be set, in a sentence; nothing when nothing is wrong.
  const std::optional<std::string>& obstacle() const { return obstacle_; }

  /// Clamped to the range, and kept for the next start.
  void setBrightness(double value);
  /// The level that was last set, by this start or an earlier one; 1 before the first.
  double last() const;

  /// Dims the picture of each external display to this share of its full strength.
  void applyGamma(double scale);

  /// The backlight, in percent, for a level.
  static std::uint16_t ddcValue(double level);
  /// What follows the source address in a message that sets a feature of the display.
  static DdcPacket ddcSetVCPPacket(std::uint8_t command, std::uint16_t value);

 private:
  Displays& displays_;
  Dispatch& dispatch_;
  UserDefaults& userDefaults_;
  std::vector<std::shared_ptr<DisplayChannel>> services_;
  std::optional<std::string> obstacle_;
  DispatchQueue& ddcQueue_;
  Registration pendingWrite_;
  double ddcNextSlot_ = 0;  ///< media clock
};

}  // namespace zephyx
