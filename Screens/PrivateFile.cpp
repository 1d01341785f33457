#include "Screens/PrivateFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>

namespace zephyx {
namespace {

bool writeAll(int file, std::string_view contents) {
  while (!contents.empty()) {
    const ssize_t written = ::write(file, contents.data(), contents.size());
    if (written <= 0) return false;
    contents.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

std::string previewFile(const std::string& folder) {
  return folder + "/clipboard_preview/Clipboard text.txt";
}

bool writePrivateFile(const std::string& path, std::string_view contents) {
  namespace fs = std::filesystem;
  std::error_code ignored;
  const fs::path folder = fs::path(path).parent_path();
  fs::create_directories(folder, ignored);
  fs::permissions(folder, fs::perms::owner_all, ignored);
  const std::string temporary = path + ".new";
  const int file = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC | O_NOFOLLOW,
                          S_IRUSR | S_IWUSR);
  if (file < 0) return false;
  const bool written = ::fchmod(file, S_IRUSR | S_IWUSR) == 0 && writeAll(file, contents);
  const bool kept =
      ::close(file) == 0 && written && std::rename(temporary.c_str(), path.c_str()) == 0;
  if (!kept) ::unlink(temporary.c_str());
  return kept;
}

}  // namespace zephyx
