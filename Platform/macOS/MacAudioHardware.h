#pragma once

#include "Platform/AudioHardware.h"

namespace zephyx {

/// Core Audio's objects. Changes are announced in turns of the main thread.
class MacAudioHardware final : public AudioHardware {
 public:
  std::optional<AudioDeviceId> defaultInputDevice() override;
  bool hasMute(AudioDeviceId device) override;
  std::optional<bool> mute(AudioDeviceId device) override;
  std::int32_t setMute(AudioDeviceId device, bool muted) override;
  bool hasInputVolume(AudioDeviceId device) override;
  std::optional<float> inputVolume(AudioDeviceId device) override;
  std::int32_t setInputVolume(AudioDeviceId device, float volume) override;
  [[nodiscard]] Registration observeDefaultInputDevice(std::function<void()> block) override;
};

}  // namespace zephyx
