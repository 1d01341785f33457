#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace zephyx {

/// Reads an ordinary file. Anything else, such as a folder or a pipe, is not opened, so nothing
/// here waits for another process. One thread at a time.
class FileReader {
 public:
  explicit FileReader(const std::string& path);
  ~FileReader();
  FileReader(const FileReader&) = delete;
  FileReader& operator=(const FileReader&) = delete;

  bool isOpen() const { return descriptor_ >= 0; }

  /// Fills `room` from where the last read ended. The number of bytes, which is smaller than the
  /// room only at the file's present end; nothing when the file cannot be read.
  std::optional<std::size_t> read(std::span<char> room);
  /// The same from `offset` on; where `read` goes on stays as it is.
  std::optional<std::size_t> readAt(std::uint64_t offset, std::span<char> room) const;

  /// Where `read` goes on.
  std::uint64_t position() const { return position_; }

 private:
  int descriptor_;
  std::uint64_t position_ = 0;
};

}  // namespace zephyx
