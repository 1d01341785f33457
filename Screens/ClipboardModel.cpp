#include "Screens/ClipboardModel.h"

#include <QtCore/QLocale>
#include <QtCore/QUrl>
#include <algorithm>

#include "Screens/Age.h"

namespace zephyx {
namespace {

// More than a row shows; the layout of a text costs time by its length.
constexpr int shownCharacters = 400;
constexpr std::int64_t worthTellingBytes = 4096;

QString shownText(const ClipboardEntry& entry) {
  if (entry.preview.empty()) {
    if (entry.filePath) return QString::fromStdString(*entry.filePath).section('/', -1);
    return entry.kind == "image" ? QStringLiteral("Image") : QString();
  }
  QString text = QString::fromStdString(entry.preview).trimmed().left(shownCharacters);
  text.replace('\t', QLatin1String("  "));
  text.remove('\r');
  return text;
}

QString detail(const ClipboardEntry& entry, std::int64_t now) {
  QStringList parts;
  if (entry.sourceAppName) parts << QString::fromStdString(*entry.sourceAppName);
  parts << ageText(entry.copiedAtEpochMs, now);
  if (entry.width && entry.height)
    parts << QStringLiteral("%1 × %2").arg(*entry.width).arg(*entry.height);
  const std::int64_t bytes =
      entry.byteSize.value_or(entry.textBytes >= worthTellingBytes ? entry.textBytes : 0);
  if (bytes > 0) parts << QLocale::c().formattedDataSize(bytes, 1, QLocale::DataSizeSIFormat);
  return parts.join(QStringLiteral("  ·  "));
}

QUrl fileUrl(const std::optional<std::string>& path) {
  return path ? QUrl::fromLocalFile(QString::fromStdString(*path)) : QUrl();
}

}  // namespace

int ClipboardModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(entries_.size());
}

QHash<int, QByteArray> ClipboardModel::roleNames() const {
  return {{kindRole, "kind"},           {previewRole, "preview"}, {detailRole, "detail"},
          {thumbnailRole, "thumbnail"}, {appIconRole, "appIcon"}, {pinnedRole, "pinned"},
          {hasFileRole, "hasFile"}};
}

QVariant ClipboardModel::data(const QModelIndex& index, int role) const {
  const ClipboardEntry* entry = this->entry(index.row());
  if (!entry) return {};
  switch (role) {
    case kindRole:
      return QString::fromStdString(entry->kind);
    case previewRole:
      return shownText(*entry);
    case detailRole:
      return detail(*entry, now_);
    case thumbnailRole:
      return fileUrl(entry->thumbnailPath);
    case appIconRole:
      return fileUrl(entry->sourceAppIconPath);
    case pinnedRole:
      return entry->pinned;
    case hasFileRole:
      return entry->filePath.has_value();
    default:
      return {};
  }
}

bool ClipboardModel::canFetchMore(const QModelIndex& parent) const {
  return !parent.isValid() && !complete_ && !fetching_ && !entries_.empty();
}

void ClipboardModel::fetchMore(const QModelIndex& parent) {
  if (!canFetchMore(parent)) return;
  fetching_ = true;
  emit moreWanted(entries_.back().id);
}

const ClipboardEntry* ClipboardModel::entry(int row) const {
  return row >= 0 && row < rowCount() ? &entries_[static_cast<std::size_t>(row)] : nullptr;
}

void ClipboardModel::replace(std::vector<ClipboardEntry> entries, bool complete) {
  beginResetModel();
  entries_ = std::move(entries);
  complete_ = complete;
  fetching_ = false;
  endResetModel();
}

void ClipboardModel::append(std::vector<ClipboardEntry> entries, bool complete) {
  complete_ = complete;
  fetching_ = false;
  if (entries.empty()) return;
  beginInsertRows({}, rowCount(), rowCount() + static_cast<int>(entries.size()) - 1);
  std::ranges::move(entries, std::back_inserter(entries_));
  endInsertRows();
}

void ClipboardModel::prepend(ClipboardEntry entry) {
  beginInsertRows({}, 0, 0);
  entries_.insert(entries_.begin(), std::move(entry));
  endInsertRows();
}

void ClipboardModel::remove(std::int64_t id) {
  const int row = rowOf(id);
  if (row < 0) return;
  beginRemoveRows({}, row, row);
  entries_.erase(entries_.begin() + row);
  endRemoveRows();
}

void ClipboardModel::setPinned(std::int64_t id, bool pinned) {
  const int row = rowOf(id);
  if (row < 0) return;
  entries_[static_cast<std::size_t>(row)].pinned = pinned;
  emit dataChanged(index(row), index(row), {pinnedRole});
}

void ClipboardModel::setNow(std::int64_t epochMs) {
  now_ = epochMs;
  if (!entries_.empty()) emit dataChanged(index(0), index(rowCount() - 1), {detailRole});
}

// Rows are in falling order of their ids.
int ClipboardModel::rowOf(std::int64_t id) const {
  const auto found = std::ranges::lower_bound(entries_, id, std::greater(), &ClipboardEntry::id);
  if (found == entries_.end() || found->id != id) return -1;
  return static_cast<int>(found - entries_.begin());
}

}  // namespace zephyx
