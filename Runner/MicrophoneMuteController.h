#pragma once

#include <functional>
#include <memory>

#include "Platform/AudioHardware.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Registration.h"

namespace zephyx {

class HeadsUpPanel;
class Platform;

/// Mutes the system's default input device: by its own switch, or where it has none by its volume.
/// Tells the user what it did on a panel in front of everything. Main thread.
class MicrophoneMuteController {
 public:
  static MicrophoneMuteController& shared();
  explicit MicrophoneMuteController(Platform& platform);
  ~MicrophoneMuteController();

  /// Called after every `setMuted` that found a device, and when the default device or its state is
  /// another one.
  std::function<void()> onStateChange;

  bool hasMicrophone() const { return audio_.defaultInputDevice().has_value(); }
  /// As the device says; false when there is none.
  bool isMuted() const;
  /// Does nothing without a device.
  void setMuted(bool muted);
  void showHUD(bool muted);
  void installDefaultDeviceListener();

 private:
  void writeMuteProperty(AudioDeviceId device, bool muted);
  void writeInputVolume(AudioDeviceId device, bool muted);
  void stateChanged() const;

  Platform& platform_;
  AudioHardware& audio_;
  float savedInputVolume_ = 1.0F;  ///< from before muting by volume
  std::unique_ptr<HeadsUpPanel> hudPanel_;
  Registration hudDismissItem_;
  Registration deviceListener_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
