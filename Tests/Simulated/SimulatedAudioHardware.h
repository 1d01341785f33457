#pragma once

#include "Platform/AudioHardware.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

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

  std::optional<AudioDeviceId> defaultInputDevice() override {
    dispatch_.requireMainThread("defaultInputDevice");
    return default_;
  }
  bool hasMute(AudioDeviceId device) override {
    const auto* microphone = find(device);
    return microphone && microphone->mute;
  }
  std::optional<bool> mute(AudioDeviceId device) override {
    const auto* microphone = find(device);
    return microphone && microphone->muteIsReadable ? microphone->mute : std::nullopt;
  }
  std::int32_t setMute(AudioDeviceId device, bool muted) override {
    auto* microphone = find(device);
    if (!microphone || !microphone->mute) return audioStatus::badDevice;
    if (microphone->writeStatus == audioStatus::noErr) {
      microphone->mute = muted;
      announce();
    }
    return microphone->writeStatus;
  }
  bool hasInputVolume(AudioDeviceId device) override {
    const auto* microphone = find(device);
    return microphone && microphone->volume;
  }
  std::optional<float> inputVolume(AudioDeviceId device) override {
    const auto* microphone = find(device);
    return microphone && microphone->volumeIsReadable ? microphone->volume : std::nullopt;
  }
  std::int32_t setInputVolume(AudioDeviceId device, float volume) override {
    auto* microphone = find(device);
    if (!microphone || !microphone->volume) return audioStatus::badDevice;
    if (microphone->writeStatus == audioStatus::noErr) {
      microphone->volume = volume;
      announce();
    }
    return microphone->writeStatus;
  }
  [[nodiscard]] Registration observeDefaultInputDevice(std::function<void()> block) override {
    dispatch_.requireMainThread("observeDefaultInputDevice");
    observer_ = std::make_shared<std::function<void()>>(std::move(block));
    return Registration([observer = observer_] { *observer = nullptr; });
  }

  /// A microphone is plugged in, or changed by its own buttons or by another program. The first one
  /// becomes the default one.
  void plugIn(AudioDeviceId device, SimulatedMicrophone microphone) {
    microphones_[device] = microphone;
    if (!default_) default_ = device;
    announce();
  }
  /// It is pulled out; none is the default one if it was.
  void pullOut(AudioDeviceId device) {
    microphones_.erase(device);
    if (default_ == device) default_.reset();
    announce();
  }
  void makeDefault(AudioDeviceId device) {
    default_ = device;
    announce();
  }
  const SimulatedMicrophone& microphone(AudioDeviceId device) const {
    return microphones_.at(device);
  }
  bool isObserved() const { return observer_ && *observer_; }

 private:
  SimulatedMicrophone* find(AudioDeviceId device) {
    dispatch_.requireMainThread("AudioHardware");
    const auto found = microphones_.find(device);
    return found == microphones_.end() ? nullptr : &found->second;
  }
  void announce() {
    if (!observer_) return;
    dispatch_.mainQueue().async([observer = observer_] {
      const auto handle = *observer;  // it may take itself off
      if (handle) handle();
    });
  }

  SimulatedDispatch& dispatch_;
  std::map<AudioDeviceId, SimulatedMicrophone> microphones_;
  std::optional<AudioDeviceId> default_;
  std::shared_ptr<std::function<void()>> observer_;
};

}  // namespace zephyx
