#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "Platform/Registration.h"

namespace zephyx {

using AudioDeviceId = std::uint32_t;

/// Statuses of a change; every other value is the system's own.
namespace audioStatus {
inline constexpr std::int32_t noErr = 0;
inline constexpr std::int32_t badDevice = 0x21646576;    ///< "!dev": no such device any more
inline constexpr std::int32_t unspecified = 0x77686174;  ///< "what": refused, or not confirmed
}  // namespace audioStatus

/// The device that records, and what keeps it from being heard. What is read is what the system
/// said last, never what was asked for; where the devices belong to another program, nothing here
/// waits long for it. Main thread.
class AudioHardware {
 public:
  virtual ~AudioHardware() = default;

  /// Nothing when there is none. What records a loudspeaker's sound is no input device.
  virtual std::optional<AudioDeviceId> defaultInputDevice() = 0;

  virtual bool hasMute(AudioDeviceId device) = 0;
  /// Nothing when the device has no such switch or it cannot be read.
  virtual std::optional<bool> mute(AudioDeviceId device) = 0;
  /// Returns a status; a change that worked is in `mute` by then.
  virtual std::int32_t setMute(AudioDeviceId device, bool muted) = 0;

  virtual bool hasInputVolume(AudioDeviceId device) = 0;
  /// From 0 to 1. Nothing when the device has no such control or it cannot be read.
  virtual std::optional<float> inputVolume(AudioDeviceId device) = 0;
  /// Returns a status; a change that worked is in `inputVolume` by then.
  virtual std::int32_t setInputVolume(AudioDeviceId device, float volume) = 0;

  /// Calls `block` on the main queue after another device, or none, became the default one, and
  /// after the default one's switch or volume changed, by whomever.
  [[nodiscard]] virtual Registration observeDefaultInputDevice(std::function<void()> block) = 0;
};

}  // namespace zephyx
