#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>

#include "Platform/AudioHardware.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Linux/Audio/AudioThread.h"

namespace zephyx {

class DispatchQueue;

/// The default source of a PulseAudio server, or of another one that speaks its protocol. Reads
/// give what the server said last, and so know of the default source alone. A change waits for the
/// server to confirm it, for the blink of an eye at most.
class LinuxAudioHardware final : public AudioHardware {
 public:
  explicit LinuxAudioHardware(DispatchQueue& mainQueue) : mainQueue_(mainQueue) {}

  /// Looks for the server, and for as long as there is none, again and again. Before this there is
  /// no input device.
  void connect();

  std::optional<AudioDeviceId> defaultInputDevice() override;
  bool hasMute(AudioDeviceId device) override;
  std::optional<bool> mute(AudioDeviceId device) override;
  std::int32_t setMute(AudioDeviceId device, bool muted) override;
  bool hasInputVolume(AudioDeviceId device) override;
  std::optional<float> inputVolume(AudioDeviceId device) override;
  std::int32_t setInputVolume(AudioDeviceId device, float volume) override;
  [[nodiscard]] Registration observeDefaultInputDevice(std::function<void()> block) override;

 private:
  using Request = std::function<void(SoundServer&, SoundServer::Completion)>;

  void inputChanged(const std::optional<InputDevice>& input);
  std::optional<InputDevice> input(AudioDeviceId device);
  /// `isSeen` tells whether a source is as it was asked for.
  std::int32_t change(AudioDeviceId device, Request request,
                      const std::function<bool(const InputDevice&)>& isSeen);

  DispatchQueue& mainQueue_;
  std::mutex mutex_;
  std::condition_variable news_;
  std::optional<InputDevice> input_;
  std::shared_ptr<std::function<void()>> observer_;
  std::function<void()> tellObserver_;
  LifetimeGuard lifetime_;
  std::unique_ptr<AudioThread> thread_;  ///< ends first
};

}  // namespace zephyx
