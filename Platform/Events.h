#pragma once

#include <cstdint>
#include <functional>

#include "Platform/Menu.h"
#include "Platform/Registration.h"

namespace zephyx {

/// As Quartz numbers them.
enum class EventType : std::uint32_t {
  leftMouseDown = 1,
  leftMouseUp = 2,
  rightMouseDown = 3,
  rightMouseUp = 4,
  mouseMoved = 5,
  leftMouseDragged = 6,
  rightMouseDragged = 7,
  keyDown = 10,
  keyUp = 11,
  flagsChanged = 12,   ///< a modifier key
  systemDefined = 14,  ///< keys for volume, brightness and media
  scrollWheel = 22,
  otherMouseDown = 25,
  otherMouseUp = 26,
  otherMouseDragged = 27,
  // What a tap hears about itself; they have no bit in a mask.
  tapDisabledByTimeout = 0xFFFFFFFE,
  tapDisabledByUserInput = 0xFFFFFFFF,
};

/// The bit of a type in a monitor's or tap's mask.
constexpr std::uint64_t eventMask(EventType type) {
  return std::uint64_t{1} << static_cast<std::uint32_t>(type);
}

/// macOS virtual key codes (position on the keyboard, whatever the layout).
namespace keyCode {
inline constexpr std::uint16_t c = 8;
inline constexpr std::uint16_t v = 9;
inline constexpr std::uint16_t space = 49;
inline constexpr std::uint16_t escape = 53;
inline constexpr std::uint16_t leftArrow = 123;
inline constexpr std::uint16_t rightArrow = 124;
}  // namespace keyCode

struct Event {
  EventType type = EventType::keyDown;
  std::uint64_t modifierFlags = 0;  ///< bits of `eventModifier`
  std::uint16_t keyCode = 0;        ///< key events only
  bool isRepeat = false;            ///< key down only: the key has been down for a while
};

/// Watches events on their way to this process's own windows. Main thread.
class EventMonitors {
 public:
  virtual ~EventMonitors() = default;
  /// The handler returns true to pass the event on, false to swallow it; it may drop its own
  /// registration.
  [[nodiscard]] virtual Registration addLocalMonitor(std::uint64_t mask,
                                                     std::function<bool(const Event&)> handler) = 0;

  /// While the registration lives, keys that are pressed reach this process's own windows alone,
  /// the system's shortcuts included. A keyboard that another program has at the moment is taken as
  /// soon as that one gives it back. Empty where the system does not let a program have it. Keys
  /// that are down when the registration ends come here until they are released.
  [[nodiscard]] virtual Registration captureKeyboard() = 0;
};

/// Types for the user. Main thread.
class EventPoster {
 public:
  virtual ~EventPoster() = default;
  /// Posts key down and key up with exactly these modifier flags to whatever has the keyboard, as
  /// if typed: modifiers that the user is still holding do not take part. False when the events
  /// cannot be made; nothing is posted then. A system that withholds its permission drops the
  /// events silently.
  virtual bool postKey(std::uint16_t keyCode, std::uint64_t modifierFlags) = 0;
};

}  // namespace zephyx
