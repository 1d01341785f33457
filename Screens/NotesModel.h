#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QAbstractListModel>
#include <vector>

#include "Screens/Note.h"

namespace zephyx {

/// The list of notes, with the beginnings of their texts. Main thread.
class NotesModel : public QAbstractListModel {
  Q_OBJECT
  QML_ANONYMOUS

 public:
  enum Role { noteIdRole = Qt::UserRole + 1, titleRole, snippetRole, ageRole };

  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;

  void replace(std::vector<Note> notes);
  /// Puts the note first, whether or not it was in the list.
  void moveToTop(Note note);
  void remove(std::int64_t id);
  /// Null when there is no such row.
  const Note* note(int row) const;
  /// -1 when it is not in the list.
  int rowOf(std::int64_t id) const;

 private:
  std::vector<Note> notes_;
};

}  // namespace zephyx
