#include "Platform/Linux/Workspace/DesktopEntries.h"

#include <QtCore/QDirIterator>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QSet>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>
#include <algorithm>
#include <functional>

namespace zephyx {
namespace {

constexpr qint64 largestFile = 1 << 20;

bool same(const QString& one, const QString& other) {
  return !one.isEmpty() && one.compare(other, Qt::CaseInsensitive) == 0;
}

QString lastComponent(const QString& id) {
  return id.section(QLatin1Char('.'), -1);
}

/// The keys of the name in the order of the user's languages, the untranslated one last.
const QStringList& nameKeys() {
  static const QStringList keys = [] {
    QStringList result;
    for (const auto& language : QLocale::system().uiLanguages()) {
      const auto parts = language.split(QLatin1Char('-'));
      if (parts.size() > 1)
        result += QStringLiteral("Name[%1_%2]").arg(parts.first(), parts.last());
      result += QStringLiteral("Name[%1]").arg(parts.first());
    }
    result += QStringLiteral("Name");
    return result;
  }();
  return keys;
}

/// Nothing for an entry that stands for no program.
std::optional<DesktopEntry> parse(const QString& path, const QString& id) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  DesktopEntry entry{id, {}, {}, {}};
  qsizetype nameRank = nameKeys().size();
  bool isInGroup = false;
  bool isApplication = false;
  const auto lines = file.read(largestFile).split('\n');
  for (const auto& raw : lines) {
    const auto line = raw.trimmed();
    if (line.startsWith('[')) {
      if (isInGroup) break;
      isInGroup = line == "[Desktop Entry]";
      continue;
    }
    const auto equals = line.indexOf('=');
    if (!isInGroup || equals <= 0 || line.startsWith('#')) continue;
    const auto key = line.left(equals).trimmed();
    const auto value = line.mid(equals + 1).trimmed();
    if (key == "Type") isApplication = value == "Application";
    if (key == "Hidden" && value == "true") return std::nullopt;
    if (key == "Icon") entry.icon = QString::fromUtf8(value);
    if (key == "StartupWMClass") entry.startupWindowClass = QString::fromUtf8(value);
    if (key.startsWith("Name")) {
      const auto rank = nameKeys().indexOf(QString::fromUtf8(key));
      if (rank < 0 || rank >= nameRank) continue;
      nameRank = rank;
      entry.name = QString::fromUtf8(value);
    }
  }
  if (!isApplication) return std::nullopt;
  return entry;
}

}  // namespace

std::optional<DesktopEntry> DesktopEntries::forWindow(const WindowClass& window) {
  const std::lock_guard lock(mutex_);
  refresh();
  const auto& instance = window.instance;
  const auto& className = window.className;
  auto kdeId = QFileInfo(window.kdeDesktopFile).fileName();
  if (kdeId.endsWith(QLatin1String(".desktop"))) kdeId.chop(8);

  // From the most certain rule to the boldest. The instance is compared by its case first: that of
  // several programs of one family differs from the other's class in nothing else.
  const std::function<bool(const DesktopEntry&)> rules[] = {
      [&](const DesktopEntry& e) { return same(window.gtkApplicationId, e.id); },
      [&](const DesktopEntry& e) { return same(kdeId, e.id); },
      [&](const DesktopEntry& e) {
        return !instance.isEmpty() && instance == e.startupWindowClass;
      },
      [&](const DesktopEntry& e) { return same(className, e.startupWindowClass); },
      [&](const DesktopEntry& e) { return same(instance, e.startupWindowClass); },
      [&](const DesktopEntry& e) { return same(className, e.id); },
      [&](const DesktopEntry& e) { return same(instance, e.id); },
      [&](const DesktopEntry& e) { return same(className, lastComponent(e.id)); },
  };
  for (const auto& rule : rules) {
    const auto entry = std::find_if(entries_.begin(), entries_.end(), rule);
    if (entry != entries_.end()) return *entry;
  }
  return std::nullopt;
}

void DesktopEntries::prefetch() {
  const std::lock_guard lock(mutex_);
  refresh();
}

std::optional<DesktopEntry> DesktopEntries::forProgram(const QString& program) {
  return forWindow({{}, {}, {}, program});
}

void DesktopEntries::refresh() {
  bool isFresh = !directories_.isEmpty();
  for (auto it = directories_.cbegin(); isFresh && it != directories_.cend(); ++it) {
    isFresh = QFileInfo(it.key()).lastModified() == it.value();
  }
  if (isFresh) return;
  entries_.clear();
  directories_.clear();
  // The user's own directory comes first and hides entries of the same id further on.
  const auto bases = QStandardPaths::standardLocations(QStandardPaths::ApplicationsLocation);
  for (const auto& base : bases) readDirectory(base);
}

void DesktopEntries::readDirectory(const QString& base) {
  directories_.insert(base, QFileInfo(base).lastModified());
  QSet<QString> known;
  for (const auto& entry : entries_) known.insert(entry.id);
  QDirIterator files(base, QDir::Files | QDir::Dirs | QDir::NoDotAndDotDot,
                     QDirIterator::Subdirectories);
  while (files.hasNext()) {
    const auto path = files.next();
    if (files.fileInfo().isDir()) {
      directories_.insert(path, files.fileInfo().lastModified());
      continue;
    }
    if (!path.endsWith(QLatin1String(".desktop"))) continue;
    auto id = path.mid(base.size() + 1).chopped(8);
    id.replace(QLatin1Char('/'), QLatin1Char('-'));
    if (known.contains(id)) continue;
    if (auto entry = parse(path, id)) entries_.push_back(std::move(*entry));
  }
}

}  // namespace zephyx
