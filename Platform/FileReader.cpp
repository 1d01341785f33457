#include "Platform/FileReader.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace zephyx {

FileReader::FileReader(const std::string& path)
    : descriptor_(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {
  struct stat status {};
  if (!isOpen() || (::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode))) return;
  ::close(descriptor_);
  descriptor_ = -1;
}

FileReader::~FileReader() {
  if (isOpen()) ::close(descriptor_);
}

std::optional<std::size_t> FileReader::read(std::span<char> room) {
  const auto size = readAt(position_, room);
  position_ += size.value_or(0);
  return size;
}

std::optional<std::size_t> FileReader::readAt(std::uint64_t offset, std::span<char> room) const {
  std::size_t filled = 0;
  while (filled < room.size()) {
    const auto free = room.subspan(filled);
    const auto size =
        ::pread(descriptor_, free.data(), free.size(), static_cast<off_t>(offset + filled));
    if (size < 0 && errno == EINTR) continue;
    if (size < 0) return std::nullopt;
    if (size == 0) break;
    filled += static_cast<std::size_t>(size);
  }
  return filled;
}

}  // namespace zephyx
