#include "Screens/NotesStore.h"

namespace zephyx {
namespace {

constexpr auto fileName = "/notes.sqlite";

constexpr StoreSchema schema{1, R"(
  CREATE TABLE note(
    id INTEGER PRIMARY KEY AUTOINCREMENT,
    text TEXT NOT NULL,
    modified INTEGER NOT NULL);
  CREATE INDEX note_modified ON note(modified);
)"};

QString textAt(const SqliteStatement& row, int column) {
  const auto bytes = row.bytes(column);
  return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
}

std::vector<Note> readNotes(SqliteStatement& selection) {
  std::vector<Note> notes;
  while (selection.step())
    notes.push_back({.id = selection.integer(0),
                     .text = textAt(selection, 1),
                     .modifiedEpochMs = selection.integer(2)});
  return notes;
}

}  // namespace

NotesStore::NotesStore(const std::string& folder) {
  auto file = openStoreFile(folder + fileName, schema);
  database_ = std::move(file.database);
  condition_ = file.condition;
}

std::vector<Note> NotesStore::list(const QString& search) {
  const std::string folded = search.toCaseFolded().toStdString();
  auto selection = database_->prepare(
      "SELECT id, substr(text, 1, 400), modified FROM note "
      "WHERE ?1 = '' OR instr(fold(text), ?1) ORDER BY modified DESC, id DESC");
  selection.bind(0, folded);
  return readNotes(selection);
}

std::optional<QString> NotesStore::text(std::int64_t id) {
  auto selection = database_->prepare("SELECT text FROM note WHERE id = ?");
  if (!selection.bind(0, id).step()) return std::nullopt;
  return textAt(selection, 0);
}

std::optional<std::int64_t> NotesStore::add(const QString& text, std::int64_t modifiedEpochMs) {
  const std::string bytes = text.toStdString();
  auto insertion = database_->prepare("INSERT INTO note(text, modified) VALUES(?,?)");
  if (!insertion.bind(0, bytes).bind(1, modifiedEpochMs).run()) return std::nullopt;
  return database_->lastInsertedRow();
}

bool NotesStore::update(const Note& note) {
  const std::string bytes = note.text.toStdString();
  auto update = database_->prepare("UPDATE note SET text = ?, modified = ? WHERE id = ?");
  return update.bind(0, bytes).bind(1, note.modifiedEpochMs).bind(2, note.id).run() &&
         database_->changedRows() == 1;
}

bool NotesStore::remove(std::int64_t id) {
  auto deletion = database_->prepare("DELETE FROM note WHERE id = ?");
  return deletion.bind(0, id).run();
}

std::vector<Note> NotesStore::all() {
  auto selection =
      database_->prepare("SELECT id, text, modified FROM note ORDER BY modified DESC, id DESC");
  return readNotes(selection);
}

std::optional<int> NotesStore::addMissing(const std::vector<Note>& notes) {
  SqliteTransaction transaction(*database_);
  auto insertion = database_->prepare(
      "INSERT INTO note(text, modified) SELECT ?1, ?2 "
      "WHERE NOT EXISTS(SELECT 1 FROM note WHERE modified = ?2 AND text = ?1)");
  int added = 0;
  for (const Note& note : notes) {
    const std::string bytes = note.text.toStdString();
    if (!insertion.bind(0, bytes).bind(1, note.modifiedEpochMs).run()) return std::nullopt;
    added += static_cast<int>(database_->changedRows());
  }
  if (!transaction.commit()) return std::nullopt;
  return added;
}

}  // namespace zephyx
