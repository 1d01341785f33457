#include "Platform/Linux/Input/LinuxAccessibility.h"

#include <xcb/xtest.h>

#include "Platform/Linux/Input/ToolkitEvents.h"

namespace zephyx {

bool LinuxAccessibility::isProcessTrusted() const {
  auto* connection = toolkitConnection();
  if (!connection) return false;
  const auto* extension = xcb_get_extension_data(connection, &xcb_test_id);
  return extension && extension->present;
}

std::optional<std::string> LinuxAccessibility::obstacle() const {
  if (isProcessTrusted()) return std::nullopt;
  return "This X server has no XTEST extension, which Zephyx needs for keyboard and mouse.";
}

}  // namespace zephyx
