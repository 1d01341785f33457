#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "Platform/EventTap.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Registration.h"
#include "Runner/HotkeyConfig.h"
#include "Runner/InputLockTarget.h"

namespace zephyx {

class HeadsUpPanel;
class Platform;

/// Takes the keyboard or the trackpad away from everybody, this program included, so that it can be
/// wiped clean, and says on a panel how to get it back. Main thread.
class InputLockController {
 public:
  explicit InputLockController(Platform& platform);
  ~InputLockController();

  /// Called after every lock and unlock, and when a lock is refused or called off.
  std::function<void()> onStateChange;

  /// Nothing while unlocked.
  std::optional<InputLockTarget> activeLock() const { return activeLock_; }

  /// Nothing may be locked. While another program has the device for itself, tries on for a while;
  /// a second call calls that off.
  void lock(InputLockTarget target);
  /// Does nothing when nothing is locked or about to be.
  void unlock();

  /// The types of events that a lock takes out.
  static std::uint64_t eventMask(InputLockTarget target);
  /// The combination of the target's hotkey, for the user's eyes.
  std::string shortcutDisplay(InputLockTarget target) const;
  /// When the permission is missing, tells the user where to give it.
  bool ensureAccessibilityPermission();
  void showHUD(InputLockTarget target);

 private:
  const HotkeyConfig& hotkeyConfig(InputLockTarget target) const;
  void install(InputLockTarget target, int attempts);
  void handle(const Event& event);
  bool isUnlockCombination(const Event& event) const;
  void enableAgain(int attempts);
  /// Not inside the tap's own callback.
  void unlockSoon();
  void tryLater(std::function<void()> attempt);
  void stateChanged() const;

  Platform& platform_;
  std::optional<InputLockTarget> activeLock_;
  std::unique_ptr<EventTap> eventTap_;
  std::unique_ptr<HeadsUpPanel> hudPanel_;
  std::int64_t keyboardUnlockKeyCode_ = -1;
  std::uint64_t keyboardUnlockFlags_ = 0;
  Registration nextAttempt_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
