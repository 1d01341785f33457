#include "Screens/NotesModel.h"

#include <algorithm>

#include "Screens/Age.h"

namespace zephyx {

int NotesModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(notes_.size());
}

QHash<int, QByteArray> NotesModel::roleNames() const {
  return {{noteIdRole, "noteId"}, {titleRole, "title"}, {snippetRole, "snippet"}, {ageRole, "age"}};
}

QVariant NotesModel::data(const QModelIndex& index, int role) const {
  const Note* note = this->note(index.row());
  if (!note) return {};
  switch (role) {
    case noteIdRole:
      return static_cast<qint64>(note->id);
    case titleRole:
      return noteTitle(note->text);
    case snippetRole:
      return noteSnippet(note->text);
    case ageRole:
      return ageText(note->modifiedEpochMs, nowEpochMs());
    default:
      return {};
  }
}

void NotesModel::replace(std::vector<Note> notes) {
  beginResetModel();
  notes_ = std::move(notes);
  endResetModel();
}

void NotesModel::moveToTop(Note note) {
  const int row = rowOf(note.id);
  if (row < 0) {
    beginInsertRows({}, 0, 0);
    notes_.insert(notes_.begin(), std::move(note));
    endInsertRows();
    return;
  }
  if (row > 0) {
    beginMoveRows({}, row, row, {}, 0);
    std::rotate(notes_.begin(), notes_.begin() + row, notes_.begin() + row + 1);
    endMoveRows();
  }
  notes_.front() = std::move(note);
  emit dataChanged(index(0), index(rowCount() - 1));
}

void NotesModel::remove(std::int64_t id) {
  const int row = rowOf(id);
  if (row < 0) return;
  beginRemoveRows({}, row, row);
  notes_.erase(notes_.begin() + row);
  endRemoveRows();
}

const Note* NotesModel::note(int row) const {
  return row >= 0 && row < rowCount() ? &notes_[static_cast<std::size_t>(row)] : nullptr;
}

int NotesModel::rowOf(std::int64_t id) const {
  const auto found = std::ranges::find(notes_, id, &Note::id);
  return found == notes_.end() ? -1 : static_cast<int>(found - notes_.begin());
}

}  // namespace zephyx
