#include "Screens/ClipboardStore.h"

#include <QtCore/QString>
#include <algorithm>
#include <chrono>
#include <filesystem>
#include <set>
#include <system_error>

namespace zephyx {
namespace {

namespace fs = std::filesystem;

constexpr auto fileName = "/clipboard_history.sqlite";
constexpr auto blobsFolder = "clipboard_blobs";
constexpr auto thumbnailsFolder = "clipboard_thumbs";

// Long texts are kept in parts, so that neither writing nor searching needs the whole in memory.
constexpr std::size_t partBytes = 64 * 1024;

constexpr std::int64_t worthGivingBackPages = 128;

constexpr auto sweptAge = std::chrono::hours(1);

constexpr StoreSchema schema{1, R"(
  CREATE TABLE entry(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    kind TEXT NOT NULL,
    preview TEXT NOT NULL,
    text_bytes INTEGER NOT NULL,
    file_path TEXT, image_blob_path TEXT, thumbnail_path TEXT,
    byte_size INTEGER, width INTEGER, height INTEGER,
    source_app_name TEXT, source_app_bundle_id TEXT, source_app_icon_path TEXT,
    copied_at INTEGER NOT NULL,
    pinned INTEGER NOT NULL DEFAULT 0);
  CREATE INDEX entry_pinned ON entry(pinned, id);
  CREATE TABLE part(
    entry INTEGER NOT NULL, number INTEGER NOT NULL, bytes BLOB NOT NULL,
    PRIMARY KEY(entry, number));
)"};

constexpr auto insertSql = R"(
  INSERT INTO entry(kind, preview, text_bytes, file_path, image_blob_path, thumbnail_path,
    byte_size, width, height, source_app_name, source_app_bundle_id, source_app_icon_path,
    copied_at) VALUES(?,?,?,?,?,?,?,?,?,?,?,?,?))";

constexpr auto pageSql = R"(
  SELECT id, kind, preview, text_bytes, file_path, image_blob_path, thumbnail_path, byte_size,
    width, height, source_app_name, source_app_bundle_id, source_app_icon_path, copied_at, pinned
  FROM entry
  WHERE id < ?1 AND (?2 = '' OR kind = ?2) AND pinned >= ?3 AND (?4 = ''
    OR instr(fold(preview), ?4) OR instr(fold(coalesce(file_path, '')), ?4)
    OR instr(fold(coalesce(source_app_name, '')), ?4)
    OR instr(fold((SELECT bytes FROM part WHERE entry = id AND number = 0)), ?4))
  ORDER BY id DESC LIMIT ?5)";

ClipboardEntry readEntry(const SqliteStatement& row) {
  return {
      .id = row.integer(0),
      .kind = row.text(1),
      .preview = row.text(2),
      .textBytes = row.integer(3),
      .filePath = row.optionalText(4),
      .imageBlobPath = row.optionalText(5),
      .thumbnailPath = row.optionalText(6),
      .byteSize = row.optionalInteger(7),
      .width = row.optionalInteger(8),
      .height = row.optionalInteger(9),
      .sourceAppName = row.optionalText(10),
      .sourceAppBundleId = row.optionalText(11),
      .sourceAppIconPath = row.optionalText(12),
      .copiedAtEpochMs = row.integer(13),
      .pinned = row.integer(14) != 0,
  };
}

void cutBetweenCharacters(std::string& text, std::size_t bytes) {
  if (text.size() <= bytes) return;
  while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0U) == 0x80U) --bytes;
  text.resize(bytes);
}

}  // namespace

ClipboardStore::ClipboardStore(std::string folder) : folder_(std::move(folder)) {
  auto file = openStoreFile(folder_ + fileName, schema);
  database_ = std::move(file.database);
  condition_ = file.condition;
}

std::optional<ClipboardStore::Inserted> ClipboardStore::insert(const CapturedEntry& captured,
                                                               std::int64_t limit) {
  auto inserted = tryInsert(captured, limit);
  return inserted || !replaceWhenDamaged() ? inserted : tryInsert(captured, limit);
}

// Statements of the damaged database must be gone by now.
bool ClipboardStore::replaceWhenDamaged() {
  if (!database_->damaged()) return false;
  database_.reset();
  auto file = replaceDamagedStoreFile(folder_ + fileName, schema);
  database_ = std::move(file.database);
  condition_ = file.condition;
  return true;
}

std::optional<ClipboardStore::Inserted> ClipboardStore::tryInsert(const CapturedEntry& captured,
                                                                  std::int64_t limit) {
  const ClipboardEntry& entry = captured.entry;
  SqliteTransaction transaction(*database_);
  auto insertion = database_->prepare(insertSql);
  insertion.bind(0, entry.kind)
      .bind(1, entry.preview)
      .bind(2, entry.textBytes)
      .bindOptional(3, entry.filePath)
      .bindOptional(4, entry.imageBlobPath)
      .bindOptional(5, entry.thumbnailPath)
      .bindOptional(6, entry.byteSize)
      .bindOptional(7, entry.width)
      .bindOptional(8, entry.height)
      .bindOptional(9, entry.sourceAppName)
      .bindOptional(10, entry.sourceAppBundleId)
      .bindOptional(11, entry.sourceAppIconPath)
      .bind(12, entry.copiedAtEpochMs);
  if (!insertion.run()) return std::nullopt;
  Inserted inserted{.entry = entry, .dropped = {}};
  inserted.entry.id = database_->lastInsertedRow();
  if (!entry.isWhole() && !insertParts(inserted.entry.id, captured.text)) return std::nullopt;

  Dropped dropped;
  auto surplus = database_->prepare(
      "SELECT id, image_blob_path, thumbnail_path FROM entry WHERE pinned = 0 "
      "ORDER BY id DESC LIMIT -1 OFFSET ?");
  surplus.bind(0, std::max<std::int64_t>(limit, 1));
  collect(surplus, dropped);
  if (surplus.failed() || !deleteRows(dropped.ids) || !transaction.commit()) return std::nullopt;
  removeFiles(dropped.files);
  inserted.dropped = std::move(dropped.ids);
  if (!inserted.dropped.empty()) giveBackSpace();
  return inserted;
}

bool ClipboardStore::insertParts(std::int64_t id, std::string_view text) {
  auto insertion = database_->prepare("INSERT INTO part(entry, number, bytes) VALUES(?,?,?)");
  for (std::int64_t number = 0; !text.empty(); ++number) {
    const auto part = text.substr(0, partBytes);
    if (!insertion.bind(0, id).bind(1, number).bindBlob(2, part).run()) return false;
    text.remove_prefix(part.size());
  }
  return true;
}

std::vector<ClipboardEntry> ClipboardStore::page(const ClipboardQuery& query, std::int64_t before,
                                                 int count) {
  const std::string folded = QString::fromStdString(query.text).toCaseFolded().toStdString();
  std::vector<ClipboardEntry> entries;
  {
    auto selection = database_->prepare(pageSql);
    selection.bind(0, before)
        .bind(1, query.kind)
        .bind(2, std::int64_t{query.pinnedOnly})
        .bind(3, folded)
        .bind(4, std::int64_t{count});
    while (selection.step()) entries.push_back(readEntry(selection));
    if (!selection.failed()) return entries;
    database_->damaged();
  }
  if (replaceWhenDamaged()) entries.clear();
  return entries;
}

std::optional<std::string> ClipboardStore::text(std::int64_t id) {
  return beginningOfText(id, std::string::npos);
}

std::optional<std::string> ClipboardStore::beginningOfText(std::int64_t id, std::size_t bytes) {
  auto selection = database_->prepare("SELECT preview, text_bytes FROM entry WHERE id = ?");
  if (!selection.bind(0, id).step()) return std::nullopt;
  std::string text = selection.text(0);
  const auto wanted = std::min(static_cast<std::size_t>(selection.integer(1)), bytes);
  if (wanted > text.size()) {
    text.clear();
    text.reserve(std::min(wanted + partBytes, static_cast<std::size_t>(selection.integer(1))));
    auto parts = database_->prepare("SELECT bytes FROM part WHERE entry = ? ORDER BY number");
    parts.bind(0, id);
    while (text.size() < wanted && parts.step()) text += parts.bytes(0);
    if (text.size() < wanted) return std::nullopt;
  }
  cutBetweenCharacters(text, bytes);
  return text;
}

bool ClipboardStore::setPinned(std::int64_t id, bool pinned) {
  auto update = database_->prepare("UPDATE entry SET pinned = ? WHERE id = ?");
  return update.bind(0, std::int64_t{pinned}).bind(1, id).run() && database_->changedRows() == 1;
}

bool ClipboardStore::remove(std::int64_t id) {
  auto selection =
      database_->prepare("SELECT id, image_blob_path, thumbnail_path FROM entry WHERE id = ?");
  selection.bind(0, id);
  return drop(selection);
}

bool ClipboardStore::clear() {
  auto selection =
      database_->prepare("SELECT id, image_blob_path, thumbnail_path FROM entry WHERE pinned = 0");
  return drop(selection);
}

void ClipboardStore::collect(SqliteStatement& selection, Dropped& dropped) {
  while (selection.step()) {
    dropped.ids.push_back(selection.integer(0));
    for (const int column : {1, 2})
      if (auto file = selection.optionalText(column)) dropped.files.push_back(*std::move(file));
  }
}

bool ClipboardStore::deleteRows(const std::vector<std::int64_t>& ids) {
  auto entry = database_->prepare("DELETE FROM entry WHERE id = ?");
  auto parts = database_->prepare("DELETE FROM part WHERE entry = ?");
  return std::ranges::all_of(
      ids, [&](std::int64_t id) { return entry.bind(0, id).run() && parts.bind(0, id).run(); });
}

// The files go after the rows: killed in between, a file is left over and swept later, while an
// entry without its image would be shown.
bool ClipboardStore::drop(SqliteStatement& selection) {
  SqliteTransaction transaction(*database_);
  Dropped dropped;
  collect(selection, dropped);
  const bool read = !selection.failed();
  selection.reset();
  if (!read || !deleteRows(dropped.ids) || !transaction.commit()) return false;
  removeFiles(dropped.files);
  giveBackSpace();
  return true;
}

void ClipboardStore::removeFiles(const std::vector<std::string>& files) {
  for (const fs::path file : files) {
    std::error_code error;
    const fs::path parent = fs::weakly_canonical(file.parent_path(), error);
    if (error) continue;
    for (const auto* name : {blobsFolder, thumbnailsFolder}) {
      const fs::path own = fs::weakly_canonical(fs::path(folder_) / name, error);
      if (!error && parent == own && !fs::is_directory(fs::symlink_status(file, error)))
        fs::remove(file, error);
    }
  }
}

void ClipboardStore::giveBackSpace() {
  auto unused = database_->prepare("PRAGMA freelist_count");
  if (!unused.step() || unused.integer(0) < worthGivingBackPages) return;
  auto vacuum = database_->prepare("PRAGMA incremental_vacuum");
  while (vacuum.step()) {
  }
}

void ClipboardStore::sweepImages() {
  // The entries of a store that was set aside may still name these files.
  if (condition_ == StoreCondition::notKept || hasStoreSetAside(folder_ + fileName)) return;
  std::set<std::string> named;
  auto selection = database_->prepare("SELECT image_blob_path, thumbnail_path FROM entry");
  while (selection.step())
    for (const int column : {0, 1})
      if (const auto file = selection.optionalText(column))
        named.insert(fs::path(*file).filename().string());
  if (selection.failed()) return;
  const auto oldest = fs::file_time_type::clock::now() - sweptAge;
  for (const auto* name : {blobsFolder, thumbnailsFolder}) {
    std::error_code error;
    for (const auto& file : fs::directory_iterator(fs::path(folder_) / name, error)) {
      if (!file.is_regular_file(error) || named.contains(file.path().filename().string())) continue;
      if (file.last_write_time(error) < oldest && !error) fs::remove(file.path(), error);
    }
  }
}

}  // namespace zephyx
