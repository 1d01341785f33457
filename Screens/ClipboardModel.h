#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QAbstractListModel>
#include <cstdint>
#include <vector>

#include "Screens/ClipboardEntry.h"

namespace zephyx {

/// The rows of the history that were loaded so far, newest first. Main thread.
class ClipboardModel : public QAbstractListModel {
  Q_OBJECT
  QML_ANONYMOUS

 public:
  enum Role {
    kindRole = Qt::UserRole + 1,
    previewRole,
    detailRole,
    thumbnailRole,
    appIconRole,
    pinnedRole,
    hasFileRole
  };

  using QAbstractListModel::QAbstractListModel;

  int rowCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  QHash<int, QByteArray> roleNames() const override;
  bool canFetchMore(const QModelIndex& parent) const override;
  void fetchMore(const QModelIndex& parent) override;

  /// Null when there is no such row.
  const ClipboardEntry* entry(int row) const;

  /// `complete`: there is nothing older to be loaded.
  void replace(std::vector<ClipboardEntry> entries, bool complete);
  void append(std::vector<ClipboardEntry> entries, bool complete);
  void prepend(ClipboardEntry entry);
  void remove(std::int64_t id);
  void setPinned(std::int64_t id, bool pinned);
  /// Ages are told as of this moment.
  void setNow(std::int64_t epochMs);

 signals:
  /// The rows older than `before` are wanted.
  void moreWanted(qint64 before);

 private:
  int rowOf(std::int64_t id) const;

  std::vector<ClipboardEntry> entries_;
  std::int64_t now_ = 0;
  bool complete_ = true;
  bool fetching_ = false;
};

}  // namespace zephyx
