#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

struct sqlite3;
struct sqlite3_stmt;

namespace zephyx {

/// What the program's own history store says of one entry.
struct HistoryRow {
  std::int64_t id = 0;
  std::string kind, text, filePath, imageBlobPath, thumbnailPath, sourceAppName;
};

/// Reads the program's history store beside it. Sees nothing as long as there is no store.
class HistoryFile {
 public:
  explicit HistoryFile(std::filesystem::path path) : path_(std::move(path)) {}
  HistoryFile(const HistoryFile&) = delete;
  HistoryFile& operator=(const HistoryFile&) = delete;
  ~HistoryFile();

  /// Oldest first.
  std::vector<HistoryRow> rows();
  std::int64_t count();
  /// The newest entry's; 0 when there is none.
  std::int64_t lastId();

 private:
  template <typename Row>
  void query(const std::string& sql, Row row);
  std::int64_t number(const std::string& sql);

  std::filesystem::path path_;
  sqlite3* database_ = nullptr;
};

}  // namespace zephyx
