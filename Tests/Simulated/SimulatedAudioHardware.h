#pragma once

#include <map>
#include <memory>
#include <vector>

#include "Platform/AudioHardware.h"

namespace zephyx {

class SimulatedDispatch;

/// A microphone: what it has, and what goes wrong with it.
struct SimulatedMicrophone {
  std::optional<bool> mute;  ///< nothing: it has no switch
  bool muteIsReadable = true;
  std::optional<float> volume;  ///< nothing: it has no control
  bool volumeIsReadable = true;
  std::int32_t writeStatus = audioStatus::noErr;  ///< of every change; others change nothing
};

class SimulatedAudioHardware final : public AudioHardware {
 public:
  explicit SimulatedAudioHardware(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  std::optional<AudioDeviceId> defaultInputDevice() override;
  bool hasMute(AudioDeviceId device) override;
  std::optional<bool> mute(AudioDeviceId device) override;
  std::int32_t setMute(AudioDeviceId device, bool muted) override;
  bool hasInputVolume(AudioDeviceId device) override;
  std::optional<float> inputVolume(AudioDeviceId device) override;
  std::int32_t setInputVolume(AudioDeviceId device, float volume) override;
  [[nodiscard]] Registration observeDefaultInputDevice(std::function<void()> block) override;

  /// A microphone is plugged in, or changed by its own buttons or by another program. The first one
  /// becomes the default one.
  void plugIn(AudioDeviceId device, SimulatedMicrophone microphone);
  /// It is pulled out; none is the default one if it was.
  void pullOut(AudioDeviceId device);
  void makeDefault(AudioDeviceId device);
  const SimulatedMicrophone& microphone(AudioDeviceId device) const {
    return microphones_.at(device);
  }
  bool isObserved() const { return observer_ && *observer_; }

 private:
  SimulatedMicrophone* find(AudioDeviceId device);
  void announce();

  SimulatedDispatch& dispatch_;
  std::map<AudioDeviceId, SimulatedMicrophone> microphones_;
  std::optional<AudioDeviceId> default_;
  std::shared_ptr<std::function<void()>> observer_;
};

}  // namespace zephyx
