#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Screens/Note.h"
#include "Screens/StoreFile.h"

namespace zephyx {

/// The notes on disk. What was written survives the process being killed. Main thread.
class NotesStore {
 public:
  /// `folder` is the program's own folder.
  explicit NotesStore(const std::string& folder);

  StoreCondition condition() const { return condition_; }

  /// Last changed first, each with the beginning of its text only; those that hold `search` in any
  /// case, or all when it is empty.
  std::vector<Note> list(const QString& search);
  std::optional<QString> text(std::int64_t id);
  std::optional<std::int64_t> add(const QString& text, std::int64_t modifiedEpochMs);
  bool update(const Note& note);
  bool remove(std::int64_t id);

  /// Whole, last changed first.
  std::vector<Note> all();
  /// Adds those that are not there with the same text and time; all or, on failure, none. The count
  /// of those added.
  std::optional<int> addMissing(const std::vector<Note>& notes);

 private:
  std::unique_ptr<Sqlite> database_;
  StoreCondition condition_;
};

}  // namespace zephyx
