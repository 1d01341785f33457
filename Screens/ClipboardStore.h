#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "Screens/ClipboardEntry.h"
#include "Screens/StoreFile.h"

namespace zephyx {

/// The history on disk. Used by one thread at a time. An entry that `insert` returned survives the
/// process being killed. Images and thumbnails of an entry that is dropped are removed, when they
/// lie in the folders that the host keeps for them.
class ClipboardStore {
 public:
  /// `folder` is the program's own folder; the store and the host's image folders lie in it.
  explicit ClipboardStore(std::string folder);

  StoreCondition condition() const { return condition_; }

  struct Inserted {
    ClipboardEntry entry;
    std::vector<std::int64_t> dropped;  ///< the entries that made room
  };
  /// Keeps at most `limit` entries that are not pinned. Nothing when it could not be written.
  std::optional<Inserted> insert(const CapturedEntry& captured, std::int64_t limit);

  /// Newest first: at most `count` entries that are older than `before`.
  std::vector<ClipboardEntry> page(const ClipboardQuery& query, std::int64_t before, int count);
  static constexpr std::int64_t newest = INT64_MAX;

  /// The whole text; nothing when there is no such entry.
  std::optional<std::string> text(std::int64_t id);
  /// At most `bytes` of the beginning of the text, cut between characters.
  std::optional<std::string> beginningOfText(std::int64_t id, std::size_t bytes);

  bool setPinned(std::int64_t id, bool pinned);
  bool remove(std::int64_t id);
  /// Removes all that are not pinned.
  bool clear();

  /// Removes images that no entry names and that are too old to belong to a copy under way.
  void sweepImages();

 private:
  struct Dropped {
    std::vector<std::int64_t> ids;
    std::vector<std::string> files;
  };
  std::optional<Inserted> tryInsert(const CapturedEntry& captured, std::int64_t limit);
  bool insertParts(std::int64_t id, std::string_view text);
  void collect(SqliteStatement& selection, Dropped& dropped);
  bool deleteRows(const std::vector<std::int64_t>& ids);
  bool drop(SqliteStatement& selection);
  void removeFiles(const std::vector<std::string>& files);
  void giveBackSpace();
  bool replaceWhenDamaged();

  std::string folder_;
  std::unique_ptr<Sqlite> database_;
  StoreCondition condition_;
};

}  // namespace zephyx
