#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

struct sqlite3;
struct sqlite3_stmt;

namespace zephyx {

/// One prepared statement. Parameters and columns count from zero. Texts and blobs are bound
/// without a copy: they must live until the statement has run.
class SqliteStatement {
 public:
  SqliteStatement() = default;
  SqliteStatement(sqlite3* database, std::string_view sql);

  SqliteStatement& bind(int index, std::int64_t value);
  SqliteStatement& bind(int index, std::string_view text);
  SqliteStatement& bindOptional(int index, const std::optional<std::string>& text);
  SqliteStatement& bindOptional(int index, const std::optional<std::int64_t>& value);
  SqliteStatement& bindBlob(int index, std::string_view bytes);

  /// True when a row is there to be read.
  bool step();
  /// Runs a statement that gives no rows, and makes it ready for the next run. False on failure.
  bool run();
  /// Ready for new parameters and a new run.
  void reset();
  /// Whether the last run or step failed.
  bool failed() const { return failed_; }

  std::int64_t integer(int column) const;
  std::string text(int column) const;
  std::optional<std::string> optionalText(int column) const;
  std::optional<std::int64_t> optionalInteger(int column) const;
  /// Valid until the next step or reset.
  std::string_view bytes(int column) const;

 private:
  struct Finalize {
    void operator()(sqlite3_stmt* statement) const;
  };
  std::unique_ptr<sqlite3_stmt, Finalize> statement_;
  bool failed_ = false;
};

/// A database connection, used by one thread at a time. SQL may call `fold(text)`, which makes
/// texts that differ in case only equal.
class Sqlite {
 public:
  /// Null when the file cannot be opened. The file is made readable by its user alone.
  static std::unique_ptr<Sqlite> open(const std::string& path);
  static std::unique_ptr<Sqlite> openInMemory();

  /// Runs statements without parameters. False on failure.
  bool execute(const char* sql);
  SqliteStatement prepare(std::string_view sql) { return {connection_.get(), sql}; }
  /// Whether a failure said that the file's contents are not a sound database.
  bool damaged();
  std::int64_t lastInsertedRow() const;
  std::int64_t changedRows() const;

 private:
  struct Close {
    void operator()(sqlite3* connection) const;
  };
  explicit Sqlite(sqlite3* connection) : connection_(connection) {}
  std::unique_ptr<sqlite3, Close> connection_;
  bool damaged_ = false;
};

/// Rolls back unless committed.
class SqliteTransaction {
 public:
  explicit SqliteTransaction(Sqlite& database);
  SqliteTransaction(const SqliteTransaction&) = delete;
  SqliteTransaction& operator=(const SqliteTransaction&) = delete;
  ~SqliteTransaction();
  /// False when nothing was written.
  bool commit();

 private:
  Sqlite& database_;
  bool open_;
};

}  // namespace zephyx
