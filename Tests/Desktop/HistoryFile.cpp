#include "Tests/Desktop/HistoryFile.h"

#include <sqlite3.h>

namespace zephyx {
namespace {

std::string columnText(sqlite3_stmt* statement, int column) {
  const void* bytes = sqlite3_column_blob(statement, column);
  const auto length = static_cast<std::size_t>(sqlite3_column_bytes(statement, column));
  return bytes ? std::string(static_cast<const char*>(bytes), length) : std::string();
}

}  // namespace

HistoryFile::~HistoryFile() {
  sqlite3_close(database_);
}

template <typename Row>
void HistoryFile::query(const std::string& sql, Row row) {
  if (!database_) {
    if (!std::filesystem::exists(path_)) return;
    if (sqlite3_open_v2(path_.c_str(), &database_, SQLITE_OPEN_READONLY, nullptr) == SQLITE_OK) {
      sqlite3_busy_timeout(database_, 2000);
    } else {
      sqlite3_close(database_);
      database_ = nullptr;
      return;
    }
  }
  sqlite3_stmt* statement = nullptr;
  if (sqlite3_prepare_v2(database_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) return;
  while (sqlite3_step(statement) == SQLITE_ROW) row(statement);
  sqlite3_finalize(statement);
}

std::vector<HistoryRow> HistoryFile::rows() {
  std::vector<HistoryRow> result;
  std::vector<std::int64_t> lengths;
  query(
      "SELECT id, kind, preview, text_bytes, file_path, image_blob_path, thumbnail_path, "
      "source_app_name FROM entry ORDER BY id",
      [&](sqlite3_stmt* row) {
        result.push_back({sqlite3_column_int64(row, 0), columnText(row, 1), columnText(row, 2),
                          columnText(row, 4), columnText(row, 5), columnText(row, 6),
                          columnText(row, 7)});
        lengths.push_back(sqlite3_column_int64(row, 3));
      });
  for (std::size_t index = 0; index < result.size(); ++index) {
    auto& row = result[index];
    if (lengths[index] == static_cast<std::int64_t>(row.text.size())) continue;
    // Long texts lie in numbered parts; the row holds their beginning only.
    row.text.clear();
    query("SELECT bytes FROM part WHERE entry = " + std::to_string(row.id) + " ORDER BY number",
          [&](sqlite3_stmt* part) { row.text += columnText(part, 0); });
  }
  return result;
}

std::int64_t HistoryFile::number(const std::string& sql) {
  std::int64_t result = 0;
  query(sql, [&](sqlite3_stmt* row) { result = sqlite3_column_int64(row, 0); });
  return result;
}

std::int64_t HistoryFile::count() {
  return number("SELECT count(*) FROM entry");
}

std::int64_t HistoryFile::lastId() {
  return number("SELECT max(id) FROM entry");
}

}  // namespace zephyx
