#include "Screens/StoreFile.h"

#include <sys/stat.h>

#include <chrono>
#include <filesystem>
#include <system_error>

#include "Platform/PrivateFile.h"

namespace zephyx {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view damagedSuffix = ".damaged-";
constexpr std::string_view newerSuffix = ".newer-";

enum class Soundness { sound, empty, damaged, newer, unreachable };

Soundness examine(Sqlite& database, std::int64_t knownVersion) {
  // A file that another process keeps locked, or that cannot be read, is not a damaged one.
  const auto failure = [&] {
    return database.damaged() ? Soundness::damaged : Soundness::unreachable;
  };
  auto version = database.prepare("PRAGMA user_version");
  if (!version.step()) return failure();
  if (version.integer(0) > knownVersion) return Soundness::newer;
  auto tables = database.prepare("SELECT count(*) FROM sqlite_schema");
  if (!tables.step()) return failure();
  if (version.integer(0) == knownVersion) return Soundness::sound;
  return tables.integer(0) == 0 ? Soundness::empty : Soundness::damaged;
}

// With a write-ahead log, a commit is in the file system before it returns, so that the death of
// the process loses nothing; only a power failure may take the last moments.
bool configure(Sqlite& database) {
  return database.execute(
      "PRAGMA journal_mode=WAL; PRAGMA synchronous=NORMAL; PRAGMA journal_size_limit=4194304;"
      "PRAGMA temp_store=MEMORY; PRAGMA secure_delete=ON");
}

bool create(Sqlite& database, const StoreSchema& schema) {
  // These can only be chosen before the first table exists. Texts of megabytes are written in half
  // the time of the usual pages of 4 KiB, and short entries as fast.
  if (!database.execute("PRAGMA page_size=8192; PRAGMA auto_vacuum=INCREMENTAL") ||
      !configure(database)) {
    return false;
  }
  SqliteTransaction transaction(database);
  const std::string version = "PRAGMA user_version=" + std::to_string(schema.version);
  return database.execute(schema.sql) && database.execute(version.c_str()) && transaction.commit();
}

void setAside(const std::string& path, std::string_view suffix) {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const std::string aside =
      path + std::string(suffix) +
      std::to_string(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
  std::error_code ignored;
  fs::rename(path, aside, ignored);
  fs::rename(path + "-wal", aside + "-wal", ignored);
  fs::remove(path + "-shm", ignored);
}

StoreFile inMemory(const StoreSchema& schema) {
  auto database = Sqlite::openInMemory();
  if (database) create(*database, schema);
  return {std::move(database), StoreCondition::notKept};
}

StoreFile beginAnew(const std::string& path, const StoreSchema& schema, StoreCondition condition) {
  auto database = Sqlite::open(path);
  if (!database || !create(*database, schema)) return inMemory(schema);
  return {std::move(database), condition};
}

}  // namespace

StoreFile openStoreFile(const std::string& path, const StoreSchema& schema) {
  makePrivateFolder(fs::path(path).parent_path().string());
  auto database = Sqlite::open(path);
  if (!database) return inMemory(schema);
  switch (examine(*database, schema.version)) {
    case Soundness::sound:
      if (configure(*database)) return {std::move(database), StoreCondition::opened};
      return inMemory(schema);
    case Soundness::empty:
      if (create(*database, schema)) return {std::move(database), StoreCondition::created};
      return inMemory(schema);
    case Soundness::newer:
      database.reset();
      setAside(path, newerSuffix);
      return beginAnew(path, schema, StoreCondition::replacedNewer);
    case Soundness::unreachable:
      return inMemory(schema);
    case Soundness::damaged:
      database.reset();
      break;
  }
  return replaceDamagedStoreFile(path, schema);
}

StoreFile replaceDamagedStoreFile(const std::string& path, const StoreSchema& schema) {
  setAside(path, damagedSuffix);
  return beginAnew(path, schema, StoreCondition::replacedDamaged);
}

bool hasStoreSetAside(const std::string& path) {
  const fs::path store(path);
  const std::string name = store.filename().string();
  std::error_code error;
  for (const auto& file : fs::directory_iterator(store.parent_path(), error)) {
    const std::string other = file.path().filename().string();
    if (other.starts_with(name + std::string(damagedSuffix)) ||
        other.starts_with(name + std::string(newerSuffix)))
      return true;
  }
  return false;
}

}  // namespace zephyx
