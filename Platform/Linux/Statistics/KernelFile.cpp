#include "Platform/Linux/Statistics/KernelFile.h"

#include <fcntl.h>

#include <algorithm>
#include <charconv>

namespace zephyx {

KernelFile::KernelFile(const std::string& path) : file_(open(path.c_str(), O_RDONLY | O_CLOEXEC)) {}

std::string_view KernelFile::read(char* buffer, std::size_t size) const {
  const auto length = file_ ? pread(file_.get(), buffer, size, 0) : -1;
  return length > 0 ? std::string_view(buffer, static_cast<std::size_t>(length))
                    : std::string_view();
}

bool takeNumber(std::string_view& text, long long& number) {
  const auto begin = std::min(text.find_first_not_of(' '), text.size());
  const auto [end, error] = std::from_chars(text.data() + begin, text.data() + text.size(), number);
  if (error != std::errc()) return false;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return true;
}

}  // namespace zephyx
