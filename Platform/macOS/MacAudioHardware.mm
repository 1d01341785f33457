#import "Platform/macOS/MacAudioHardware.h"

#import <CoreAudio/CoreAudio.h>
#import <dispatch/dispatch.h>

#include <memory>
#include <utility>

namespace zephyx {
namespace {

constexpr AudioObjectPropertyAddress defaultInput = {kAudioHardwarePropertyDefaultInputDevice,
                                                     kAudioObjectPropertyScopeGlobal,
                                                     kAudioObjectPropertyElementMain};
constexpr AudioObjectPropertyAddress inputMute = {
    kAudioDevicePropertyMute, kAudioObjectPropertyScopeInput, kAudioObjectPropertyElementMain};
constexpr AudioObjectPropertyAddress inputScalar = {kAudioDevicePropertyVolumeScalar,
                                                    kAudioObjectPropertyScopeInput,
                                                    kAudioObjectPropertyElementMain};

template <typename Value>
std::optional<Value> read(AudioObjectID object, const AudioObjectPropertyAddress& address) {
  Value value{};
  UInt32 size = sizeof value;
  if (AudioObjectGetPropertyData(object, &address, 0, nullptr, &size, &value) != noErr) {
    return std::nullopt;
  }
  return value;
}

template <typename Value>
OSStatus write(AudioObjectID object, const AudioObjectPropertyAddress& address, Value value) {
  return AudioObjectSetPropertyData(object, &address, 0, nullptr, sizeof value, &value);
}

/// Calls `block` after changes of one property; never once it has ended.
Registration listen(AudioObjectID object, const AudioObjectPropertyAddress& address,
                    std::function<void()> block) {
  // A block that is on its way when its listener is removed still arrives.
  const auto heard = std::make_shared<std::function<void()>>(std::move(block));
  AudioObjectPropertyListenerBlock listener = ^(UInt32, const AudioObjectPropertyAddress*) {
    const auto handler = *heard;  // it may take itself off
    if (handler) handler();
  };
  const dispatch_queue_t queue = dispatch_get_main_queue();
  if (AudioObjectAddPropertyListenerBlock(object, &address, queue, listener) != noErr) return {};
  return Registration([object, address, queue, listener, heard] {
    *heard = nullptr;
    AudioObjectRemovePropertyListenerBlock(object, &address, queue, listener);
  });
}

/// Follows whichever device is the default one.
struct DefaultInputListener {
  std::function<void()> block;
  Registration device;
  Registration mute;
  Registration volume;

  void listenToDevice() {
    const auto current = read<AudioObjectID>(kAudioObjectSystemObject, defaultInput);
    const AudioObjectID object = current.value_or(kAudioObjectUnknown);
    mute = listen(object, inputMute, block);
    volume = listen(object, inputScalar, block);
  }
};

}  // namespace

std::optional<AudioDeviceId> MacAudioHardware::defaultInputDevice() {
  const auto device = read<AudioObjectID>(kAudioObjectSystemObject, defaultInput);
  return device == kAudioObjectUnknown ? std::nullopt : device;
}

bool MacAudioHardware::hasMute(AudioDeviceId device) {
  return AudioObjectHasProperty(device, &inputMute);
}

std::optional<bool> MacAudioHardware::mute(AudioDeviceId device) {
  if (!hasMute(device)) return std::nullopt;
  const auto value = read<UInt32>(device, inputMute);
  if (!value) return std::nullopt;
  return *value != 0;
}

std::int32_t MacAudioHardware::setMute(AudioDeviceId device, bool muted) {
  return write<UInt32>(device, inputMute, muted ? 1 : 0);
}

bool MacAudioHardware::hasInputVolume(AudioDeviceId device) {
  return AudioObjectHasProperty(device, &inputScalar);
}

std::optional<float> MacAudioHardware::inputVolume(AudioDeviceId device) {
  if (!hasInputVolume(device)) return std::nullopt;
  return read<Float32>(device, inputScalar);
}

std::int32_t MacAudioHardware::setInputVolume(AudioDeviceId device, float volume) {
  return write<Float32>(device, inputScalar, volume);
}

Registration MacAudioHardware::observeDefaultInputDevice(std::function<void()> block) {
  auto listener = std::make_shared<DefaultInputListener>();
  listener->block = std::move(block);
  listener->device = listen(kAudioObjectSystemObject, defaultInput,
                            [weak = std::weak_ptr<DefaultInputListener>(listener)] {
                              const auto self = weak.lock();
                              if (!self) return;
                              self->listenToDevice();
                              self->block();
                            });
  listener->listenToDevice();
  return Registration([listener = std::move(listener)]() mutable { listener.reset(); });
}

}  // namespace zephyx
