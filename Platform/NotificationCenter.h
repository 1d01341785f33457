#pragma once

#include <functional>
#include <string>

#include "Platform/Registration.h"

namespace zephyx {

/// Names as the system posts them.
namespace notification {
inline constexpr const char* windowDidResignKey = "NSWindowDidResignKeyNotification";
inline constexpr const char* windowDidBecomeKey = "NSWindowDidBecomeKeyNotification";
inline constexpr const char* windowWillClose = "NSWindowWillCloseNotification";
inline constexpr const char* applicationDidResignActive =
    "NSApplicationDidResignActiveNotification";  ///< of any object
inline constexpr const char* activeSpaceDidChange = "NSWorkspaceActiveSpaceDidChangeNotification";
}  // namespace notification

/// Delivers named notifications of an object to observers. The default centre and the workspace's
/// centre are two objects of this class. Observers are called on the main thread, in the order of
/// registration; they may add and drop observations while being called.
class NotificationCenter {
 public:
  virtual ~NotificationCenter() = default;

  /// `object` is a `notificationObject()` or null for any object.
  [[nodiscard]] virtual Registration addObserver(const std::string& name, const void* object,
                                                 std::function<void()> block) = 0;
};

}  // namespace zephyx
