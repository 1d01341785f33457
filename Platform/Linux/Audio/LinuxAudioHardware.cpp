#include "Platform/Linux/Audio/LinuxAudioHardware.h"

#include <chrono>
#include <cmath>
#include <utility>

#include "Platform/Dispatch.h"

namespace zephyx {
namespace {

/// A server of the same machine needs less than a thousandth of a second; one that hangs must not
/// be felt.
constexpr std::chrono::milliseconds confirmationTime(50);
/// Servers count volumes in whole steps.
constexpr float volumeStep = 1.0F / 65536;

}  // namespace

void LinuxAudioHardware::connect() {
  if (thread_) return;
  tellObserver_ = lifetime_.wrap([this] {
    const auto observer = observer_ ? *observer_ : nullptr;  // it may take itself off
    if (observer) observer();
  });
  thread_ = std::make_unique<AudioThread>(
      [this](const std::optional<InputDevice>& input) { inputChanged(input); });
}

void LinuxAudioHardware::inputChanged(const std::optional<InputDevice>& input) {
  {
    const std::lock_guard lock(mutex_);
    if (input == input_) return;
    input_ = input;
  }
  news_.notify_all();
  mainQueue_.async(tellObserver_);
}

std::optional<InputDevice> LinuxAudioHardware::input(AudioDeviceId device) {
  const std::lock_guard lock(mutex_);
  return input_ && input_->index == device ? input_ : std::nullopt;
}

std::optional<AudioDeviceId> LinuxAudioHardware::defaultInputDevice() {
  {
    const std::lock_guard lock(mutex_);
    if (input_) return input_->index;
  }
  if (thread_) thread_->post([](SoundServer& server) { server.retryNow(); });
  return std::nullopt;
}

bool LinuxAudioHardware::hasMute(AudioDeviceId device) {
  return input(device).has_value();
}

std::optional<bool> LinuxAudioHardware::mute(AudioDeviceId device) {
  const auto known = input(device);
  if (!known) return std::nullopt;
  return known->isMuted;
}

std::int32_t LinuxAudioHardware::setMute(AudioDeviceId device, bool muted) {
  return change(
      device,
      [=](SoundServer& server, SoundServer::Completion done) {
        server.setMute(device, muted, std::move(done));
      },
      [=](const InputDevice& seen) { return seen.isMuted == muted; });
}

bool LinuxAudioHardware::hasInputVolume(AudioDeviceId device) {
  return input(device).has_value();
}

std::optional<float> LinuxAudioHardware::inputVolume(AudioDeviceId device) {
  const auto known = input(device);
  if (!known) return std::nullopt;
  return known->volume;
}

std::int32_t LinuxAudioHardware::setInputVolume(AudioDeviceId device, float volume) {
  const auto known = input(device);
  if (!known) return audioStatus::badDevice;
  return change(
      device,
      [=, channels = known->channels](SoundServer& server, SoundServer::Completion done) {
        server.setVolume(device, channels, volume, std::move(done));
      },
      [=](const InputDevice& seen) { return std::abs(seen.volume - volume) <= volumeStep; });
}

std::int32_t LinuxAudioHardware::change(AudioDeviceId device, Request request,
                                        const std::function<bool(const InputDevice&)>& isSeen) {
  if (!thread_) return audioStatus::badDevice;
  const auto status = std::make_shared<std::optional<std::int32_t>>();
  thread_->post([this, status, request = std::move(request)](SoundServer& server) {
    request(server, [this, status](std::int32_t result) {
      {
        const std::lock_guard lock(mutex_);
        *status = result;
      }
      news_.notify_all();
    });
  });
  std::unique_lock lock(mutex_);
  news_.wait_for(lock, confirmationTime, [&] {
    if (!*status) return false;
    const bool isWatched = input_ && input_->index == device;
    return **status != audioStatus::noErr || !isWatched || isSeen(*input_);
  });
  return status->value_or(audioStatus::unspecified);
}

Registration LinuxAudioHardware::observeDefaultInputDevice(std::function<void()> block) {
  observer_ = std::make_shared<std::function<void()>>(std::move(block));
  return Registration([observer = observer_] { *observer = nullptr; });
}

}  // namespace zephyx
