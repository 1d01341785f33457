#pragma once

#include <memory>
#include <string>

#include "Screens/Sqlite.h"

namespace zephyx {

struct StoreSchema {
  std::int64_t version;
  const char* sql;  ///< makes an empty database into one of that version
};

enum class StoreCondition {
  opened,
  created,
  replacedDamaged,  ///< what was there could not be read; it was moved aside and a new one begun
  replacedNewer,    ///< a later program's file; it was moved aside and a new one begun
  notKept,          ///< nothing can be written there; the store lives in memory
};

struct StoreFile {
  std::unique_ptr<Sqlite> database;
  StoreCondition condition;
};

/// Opens a store, making its folder and itself when missing. Contents are never overwritten: what
/// cannot be used is renamed to `path` with a suffix. Committed changes survive the process being
/// killed.
StoreFile openStoreFile(const std::string& path, const StoreSchema& schema);

/// Renames the files of a store that turned out damaged while in use, and begins a new one. The
/// connection to it must be closed.
StoreFile replaceDamagedStoreFile(const std::string& path, const StoreSchema& schema);

/// Whether a store of that path was ever set aside.
bool hasStoreSetAside(const std::string& path);

}  // namespace zephyx
