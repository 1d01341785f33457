#include "Platform/PrivateFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace zephyx {
namespace {

bool writeAll(int file, BytesView contents) {
  while (!contents.empty()) {
    const auto written = ::write(file, contents.data(), contents.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    contents = contents.subspan(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

bool makePrivateFolder(const std::string& path) {
  std::error_code error;
  if (std::filesystem::is_directory(path, error)) return true;
  const auto parent = std::filesystem::path(path).parent_path();
  if (!parent.empty() && parent != path && !makePrivateFolder(parent.string())) return false;
  // Somebody else may have made it meanwhile.
  return ::mkdir(path.c_str(), 0700) == 0 || std::filesystem::is_directory(path, error);
}

bool writePrivateFile(const std::string& path, BytesView contents) {
  std::string temporary = path + ".XXXXXX";
  const int file = ::mkstemp(temporary.data());  // readable by the user alone
  if (file < 0) return false;
  const bool written = writeAll(file, contents);
  const bool closed = ::close(file) == 0;
  if (written && closed && std::rename(temporary.c_str(), path.c_str()) == 0) return true;
  ::unlink(temporary.c_str());
  return false;
}

}  // namespace zephyx
