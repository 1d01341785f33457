#include "Platform/Linux/LinuxDirectories.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>

namespace zephyx {
namespace {

/// The XDG rules ignore relative paths.
std::optional<std::string> absolutePath(const char* variable) {
  const char* value = std::getenv(variable);
  if (!value || value[0] != '/') return std::nullopt;
  std::string path = value;
  while (path.size() > 1 && path.back() == '/') path.pop_back();
  return path;
}

std::optional<std::string> beneathHome(const std::string& home, const char* variable,
                                       const char* fallback) {
  if (auto path = absolutePath(variable)) return path;
  if (home.empty()) return std::nullopt;
  return home + fallback;
}

bool isPrivateFolder(const std::string& path) {
  struct stat status {};
  return lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode) &&
         status.st_uid == getuid() && (status.st_mode & 077) == 0;
}

}  // namespace

std::string LinuxDirectories::home() const {
  if (auto path = absolutePath("HOME")) return *path;
  const passwd* user = getpwuid(getuid());
  return user && user->pw_dir && user->pw_dir[0] == '/' ? user->pw_dir : std::string();
}

std::optional<std::string> LinuxDirectories::applicationSupport() const {
  return beneathHome(home(), "XDG_DATA_HOME", "/.local/share");
}

std::optional<std::string> LinuxDirectories::configuration() const {
  return beneathHome(home(), "XDG_CONFIG_HOME", "/.config");
}

std::optional<std::string> LinuxDirectories::runtime() const {
  if (auto path = absolutePath("XDG_RUNTIME_DIR"); path && access(path->c_str(), W_OK) == 0) {
    return path;
  }
  const auto path = "/tmp/com.zephyx.app-" + std::to_string(getuid());
  mkdir(path.c_str(), 0700);
  if (!isPrivateFolder(path)) return std::nullopt;
  return path;
}

}  // namespace zephyx
