#include "Platform/Linux/Keychain/ToolCredentials.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <cstddef>

#include "Platform/Linux/FileDescriptor.h"
#include "Platform/Linux/LinuxDirectories.h"

namespace zephyx::toolCredentials {
namespace {

constexpr const char* pathInHome = "/.claude/.credentials.json";
constexpr std::size_t maximumSize = 1'048'576;

}  // namespace

std::optional<Bytes> read() {
  const auto path = LinuxDirectories().home() + pathInHome;
  // Whatever stands there: opening a pipe would wait for a writer.
  const FileDescriptor file(open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  struct stat status {};
  if (!file || fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) return std::nullopt;

  Bytes bytes(maximumSize + 1);
  std::size_t size = 0;
  while (size < bytes.size()) {
    const auto count = ::read(file.get(), bytes.data() + size, bytes.size() - size);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return std::nullopt;
    if (count == 0) break;
    size += static_cast<std::size_t>(count);
  }
  if (size > maximumSize) return std::nullopt;
  bytes.resize(size);
  return bytes;
}

}  // namespace zephyx::toolCredentials
