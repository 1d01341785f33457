#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "Platform/Registration.h"

namespace zephyx {

/// Carbon modifier flags.
namespace carbonModifier {
inline constexpr std::uint32_t command = 0x0100;
inline constexpr std::uint32_t shift = 0x0200;
inline constexpr std::uint32_t option = 0x0800;
inline constexpr std::uint32_t control = 0x1000;
}  // namespace carbonModifier

/// Statuses of a registration; every other value is the system's own.
namespace hotKeyStatus {
inline constexpr std::int32_t noErr = 0;
inline constexpr std::int32_t exists = -9878;   ///< another program holds the combination
inline constexpr std::int32_t invalid = -9879;  ///< no such key on this system
}  // namespace hotKeyStatus

struct HotKeyIdentity {
  std::uint32_t signature = 0;
  std::uint32_t id = 0;
};

struct HotKeyRegistration {
  std::int32_t status = hotKeyStatus::noErr;
  Registration handle;  ///< empty unless registered
};

/// System-wide hot keys. Main thread.
class HotKeys {
 public:
  virtual ~HotKeys() = default;
  /// Claims a combination from the whole system, with and without the lock keys on.
  virtual HotKeyRegistration registerHotKey(std::uint32_t keyCode, std::uint32_t carbonModifiers,
                                            HotKeyIdentity identity) = 0;
  /// The one receiver of presses; called once per press (not for auto-repeat) on the main thread.
  [[nodiscard]] virtual Registration setPressedHandler(
      std::function<void(HotKeyIdentity)> handler) = 0;
};

/// The current keyboard layout. Main thread.
class KeyboardLayout {
 public:
  virtual ~KeyboardLayout() = default;
  /// What the key prints in the current layout without modifiers, UTF-8, at most 4 UTF-16 units;
  /// empty when it prints nothing.
  virtual std::string character(std::uint32_t keyCode) const = 0;
  /// Case mappings of the system's language-neutral locale, UTF-8.
  virtual std::string uppercased(const std::string& text) const = 0;
  virtual std::string lowercased(const std::string& text) const = 0;
};

}  // namespace zephyx
