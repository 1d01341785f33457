#pragma once

#include "Tests/Contract/ContractMicrophones.h"
#include "Tests/Simulated/SimulatedAudioHardware.h"

namespace zephyx {

class SimulatedContractMicrophones final : public ContractMicrophones {
 public:
  explicit SimulatedContractMicrophones(SimulatedAudioHardware& audio) : audio_(audio) {}

  void connect() override {
    for (const int microphone : {0, 1}) audio_.plugIn(id(microphone), {.mute = false, .volume = 1});
  }
  void disconnect() override {
    for (const int microphone : {0, 1}) audio_.pullOut(id(microphone));
  }
  void makeDefault(int microphone) override { audio_.makeDefault(id(microphone)); }
  void setMute(int microphone, bool muted) override {
    auto changed = audio_.microphone(id(microphone));
    changed.mute = muted;
    audio_.plugIn(id(microphone), changed);
  }
  void setVolume(int microphone, float volume) override {
    auto changed = audio_.microphone(id(microphone));
    changed.volume = volume;
    audio_.plugIn(id(microphone), changed);
  }
  bool isMuted(int microphone) override { return *audio_.microphone(id(microphone)).mute; }
  float volume(int microphone) override { return *audio_.microphone(id(microphone)).volume; }

 private:
  static AudioDeviceId id(int microphone) { return 40 + static_cast<AudioDeviceId>(microphone); }

  SimulatedAudioHardware& audio_;
};

}  // namespace zephyx
