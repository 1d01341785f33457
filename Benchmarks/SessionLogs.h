#pragma once

#include <cstddef>
#include <filesystem>
#include <vector>

namespace zephyx {

/// Made-up session logs of a coding agent in a temporary folder, which goes with its owner. One
/// line in three has token counts, and with them a sixth of the bytes; the rest are prompts and
/// results of tools, one in forty of them of 100 KB.
class SessionLogs {
 public:
  /// Files from 50 KB to some megabytes, `bytes` together.
  explicit SessionLogs(std::size_t bytes);
  ~SessionLogs();
  SessionLogs(const SessionLogs&) = delete;
  SessionLogs& operator=(const SessionLogs&) = delete;

  const std::filesystem::path& root() const { return root_; }
  const std::vector<std::filesystem::path>& files() const { return files_; }
  /// All bytes in the files.
  std::size_t size() const { return size_; }

  /// Every file but one in `share` was last changed before any of its lines.
  void makeOldExceptOneIn(std::size_t share);

  /// Before the oldest line, in seconds since 1970.
  static constexpr double beginning = 1748779200;  // 2025-06-01T12:00:00Z

 private:
  std::filesystem::path root_;
  std::vector<std::filesystem::path> files_;
  std::size_t size_ = 0;
};

}  // namespace zephyx
