#pragma once

#include <string>
#include <string_view>

#include "Platform/Linux/FileDescriptor.h"

namespace zephyx {

/// A file that the kernel writes anew for each reading from its beginning. It stays open.
class KernelFile {
 public:
  explicit KernelFile(const std::string& path);

  /// False when it could not be opened.
  explicit operator bool() const { return static_cast<bool>(file_); }
  /// Its beginning, at most as long as `buffer`, which holds the text; empty on failure.
  template <std::size_t size>
  std::string_view read(char (&buffer)[size]) const {
    return read(buffer, size);
  }

 private:
  std::string_view read(char* buffer, std::size_t size) const;

  FileDescriptor file_;
};

/// Takes the decimal number at the beginning of `text` away, with the blanks before it; false, and
/// nothing taken, when there is none.
bool takeNumber(std::string_view& text, long long& number);

}  // namespace zephyx
