#pragma once

#include <cstdint>

namespace zephyx {

/// A source of the sound server, as it was when the server spoke of it last.
struct InputDevice {
  std::uint32_t index = 0;
  bool isMuted = false;
  float volume = 1;  ///< of all channels, from 0 to 1
  std::uint8_t channels = 1;
  bool operator==(const InputDevice&) const = default;
};

}  // namespace zephyx
