#include "Screens/Sqlite.h"

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QtCore/QString>

namespace zephyx {
namespace {

constexpr int busyTimeoutMilliseconds = 2000;

void fold(sqlite3_context* context, int, sqlite3_value** values) {
  // Bytes first: asking for the length afterwards must not convert again.
  const void* text = sqlite3_value_blob(values[0]);
  const int length = sqlite3_value_bytes(values[0]);
  const QByteArray folded =
      QString::fromUtf8(static_cast<const char*>(text), length).toCaseFolded().toUtf8();
  sqlite3_result_text64(context, folded.constData(), static_cast<sqlite3_uint64>(folded.size()),
                        SQLITE_TRANSIENT, SQLITE_UTF8);
}

// The journal files inherit the permissions of the database file.
bool makePrivateFile(const std::string& path) {
  const int file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR);
  if (file < 0) return false;
  const bool isPrivate = ::fchmod(file, S_IRUSR | S_IWUSR) == 0;
  ::close(file);
  return isPrivate;
}

}  // namespace

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
  sqlite3_finalize(statement);
}

SqliteStatement::SqliteStatement(sqlite3* database, std::string_view sql) {
  sqlite3_stmt* statement = nullptr;
  failed_ = sqlite3_prepare_v3(database, sql.data(), static_cast<int>(sql.size()), 0, &statement,
                               nullptr) != SQLITE_OK;
  statement_.reset(statement);
}

SqliteStatement& SqliteStatement::bind(int index, std::int64_t value) {
  sqlite3_bind_int64(statement_.get(), index + 1, value);
  return *this;
}

SqliteStatement& SqliteStatement::bind(int index, std::string_view text) {
  // A null pointer would bind NULL even for an empty text.
  sqlite3_bind_text64(statement_.get(), index + 1, text.empty() ? "" : text.data(), text.size(),
                      SQLITE_STATIC, SQLITE_UTF8);
  return *this;
}

SqliteStatement& SqliteStatement::bindOptional(int index, const std::optional<std::string>& text) {
  if (text) return bind(index, std::string_view(*text));
  sqlite3_bind_null(statement_.get(), index + 1);
  return *this;
}

SqliteStatement& SqliteStatement::bindOptional(int index,
                                               const std::optional<std::int64_t>& value) {
  if (value) return bind(index, *value);
  sqlite3_bind_null(statement_.get(), index + 1);
  return *this;
}

SqliteStatement& SqliteStatement::bindBlob(int index, std::string_view bytes) {
  sqlite3_bind_blob64(statement_.get(), index + 1, bytes.empty() ? "" : bytes.data(), bytes.size(),
                      SQLITE_STATIC);
  return *this;
}

bool SqliteStatement::step() {
  const int result = statement_ ? sqlite3_step(statement_.get()) : SQLITE_MISUSE;
  failed_ = result != SQLITE_ROW && result != SQLITE_DONE;
  return result == SQLITE_ROW;
}

bool SqliteStatement::run() {
  step();
  reset();
  return !failed_;
}

void SqliteStatement::reset() {
  sqlite3_reset(statement_.get());
  sqlite3_clear_bindings(statement_.get());
}

std::int64_t SqliteStatement::integer(int column) const {
  return sqlite3_column_int64(statement_.get(), column);
}

std::string_view SqliteStatement::bytes(int column) const {
  const void* data = sqlite3_column_blob(statement_.get(), column);
  const int length = sqlite3_column_bytes(statement_.get(), column);
  return {static_cast<const char*>(data), static_cast<std::size_t>(length)};
}

std::string SqliteStatement::text(int column) const {
  return std::string(bytes(column));
}

std::optional<std::string> SqliteStatement::optionalText(int column) const {
  if (sqlite3_column_type(statement_.get(), column) == SQLITE_NULL) return std::nullopt;
  return text(column);
}

std::optional<std::int64_t> SqliteStatement::optionalInteger(int column) const {
  if (sqlite3_column_type(statement_.get(), column) == SQLITE_NULL) return std::nullopt;
  return integer(column);
}

void Sqlite::Close::operator()(sqlite3* connection) const {
  sqlite3_close_v2(connection);
}

std::unique_ptr<Sqlite> Sqlite::open(const std::string& path) {
  const bool inMemory = path == ":memory:";
  if (!inMemory && !makePrivateFile(path)) return nullptr;
  sqlite3* connection = nullptr;
  const int result =
      sqlite3_open_v2(path.c_str(), &connection,
                      SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX, nullptr);
  std::unique_ptr<Sqlite> database(new Sqlite(connection));
  if (result != SQLITE_OK) return nullptr;
  sqlite3_busy_timeout(connection, busyTimeoutMilliseconds);
  sqlite3_create_function_v2(connection, "fold", 1,
                             SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS, nullptr, fold,
                             nullptr, nullptr, nullptr);
  return database;
}

std::unique_ptr<Sqlite> Sqlite::openInMemory() {
  return open(":memory:");
}

bool Sqlite::execute(const char* sql) {
  return sqlite3_exec(connection_.get(), sql, nullptr, nullptr, nullptr) == SQLITE_OK;
}

bool Sqlite::damaged() {
  const int code = sqlite3_errcode(connection_.get());
  damaged_ = damaged_ || code == SQLITE_CORRUPT || code == SQLITE_NOTADB;
  return damaged_;
}

std::int64_t Sqlite::lastInsertedRow() const {
  return sqlite3_last_insert_rowid(connection_.get());
}

std::int64_t Sqlite::changedRows() const {
  return sqlite3_changes64(connection_.get());
}

SqliteTransaction::SqliteTransaction(Sqlite& database)
    : database_(database), open_(database.execute("BEGIN IMMEDIATE")) {}

SqliteTransaction::~SqliteTransaction() {
  if (!open_) return;
  // The next statement would take the place of the failure that is remembered.
  database_.damaged();
  database_.execute("ROLLBACK");
}

bool SqliteTransaction::commit() {
  if (!open_ || !database_.execute("COMMIT")) return false;
  open_ = false;
  return true;
}

}  // namespace zephyx
