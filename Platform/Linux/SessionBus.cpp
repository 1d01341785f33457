#include "Platform/Linux/SessionBus.h"

#include <unistd.h>

#include <cstdlib>
#include <string>

namespace zephyx {

bool hasSessionBus() {
  const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
  if (address && *address) return true;
  const char* folder = std::getenv("XDG_RUNTIME_DIR");
  return folder && access((std::string(folder) + "/bus").c_str(), F_OK) == 0;
}

}  // namespace zephyx
