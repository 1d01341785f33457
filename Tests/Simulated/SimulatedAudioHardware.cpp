#include "Tests/Simulated/SimulatedAudioHardware.h"

#include <utility>

#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

SimulatedMicrophone* SimulatedAudioHardware::find(AudioDeviceId device) {
  dispatch_.requireMainThread("AudioHardware");
  const auto found = microphones_.find(device);
  return found == microphones_.end() ? nullptr : &found->second;
}

std::optional<AudioDeviceId> SimulatedAudioHardware::defaultInputDevice() {
  dispatch_.requireMainThread("defaultInputDevice");
  return default_;
}

bool SimulatedAudioHardware::hasMute(AudioDeviceId device) {
  const auto* microphone = find(device);
  return microphone && microphone->mute;
}

std::optional<bool> SimulatedAudioHardware::mute(AudioDeviceId device) {
  const auto* microphone = find(device);
  return microphone && microphone->muteIsReadable ? microphone->mute : std::nullopt;
}

std::int32_t SimulatedAudioHardware::setMute(AudioDeviceId device, bool muted) {
  auto* microphone = find(device);
  if (!microphone || !microphone->mute) return audioStatus::badDevice;
  if (microphone->writeStatus == audioStatus::noErr) {
    microphone->mute = muted;
    announce();
  }
  return microphone->writeStatus;
}

bool SimulatedAudioHardware::hasInputVolume(AudioDeviceId device) {
  const auto* microphone = find(device);
  return microphone && microphone->volume;
}

std::optional<float> SimulatedAudioHardware::inputVolume(AudioDeviceId device) {
  const auto* microphone = find(device);
  return microphone && microphone->volumeIsReadable ? microphone->volume : std::nullopt;
}

std::int32_t SimulatedAudioHardware::setInputVolume(AudioDeviceId device, float volume) {
  auto* microphone = find(device);
  if (!microphone || !microphone->volume) return audioStatus::badDevice;
  if (microphone->writeStatus == audioStatus::noErr) {
    microphone->volume = volume;
    announce();
  }
  return microphone->writeStatus;
}

Registration SimulatedAudioHardware::observeDefaultInputDevice(std::function<void()> block) {
  dispatch_.requireMainThread("observeDefaultInputDevice");
  observer_ = std::make_shared<std::function<void()>>(std::move(block));
  return Registration([observer = observer_] { *observer = nullptr; });
}

void SimulatedAudioHardware::announce() {
  if (!observer_) return;
  dispatch_.mainQueue().async([observer = observer_] {
    const auto handle = *observer;  // it may take itself off
    if (handle) handle();
  });
}

void SimulatedAudioHardware::plugIn(AudioDeviceId device, SimulatedMicrophone microphone) {
  microphones_[device] = microphone;
  if (!default_) default_ = device;
  announce();
}

void SimulatedAudioHardware::pullOut(AudioDeviceId device) {
  microphones_.erase(device);
  if (default_ == device) default_.reset();
  announce();
}

void SimulatedAudioHardware::makeDefault(AudioDeviceId device) {
  default_ = device;
  announce();
}

}  // namespace zephyx
