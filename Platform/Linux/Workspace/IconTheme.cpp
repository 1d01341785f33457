#include "Platform/Linux/Workspace/IconTheme.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QStandardPaths>
#include <QtCore/QStringList>
#include <QtGui/QImageReader>

namespace zephyx {
namespace {

constexpr int iconSize = 256;
constexpr int largestIcon = 2048;
constexpr const char* sizes[] = {"256x256", "512x512", "scalable", "128x128", "96x96",
                                 "64x64",   "48x48",   "32x32",    "24x24",   "16x16"};
constexpr const char* endings[] = {".png", ".svg", ".svgz", ".xpm"};

QImage read(const QString& path) {
  QImageReader reader(path);
  const auto size = reader.size();
  if (size.width() > largestIcon || size.height() > largestIcon) return {};
  const bool isVector =
      path.endsWith(QLatin1String(".svg")) || path.endsWith(QLatin1String(".svgz"));
  if (isVector && size.isValid()) {
    reader.setScaledSize(size.scaled(iconSize, iconSize, Qt::KeepAspectRatio));
  }
  return reader.read();
}

QStringList iconDirectories() {
  QStringList directories{QDir::homePath() + QLatin1String("/.icons")};
  const auto data = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation);
  for (const auto& directory : data) directories += directory + QLatin1String("/icons");
  return directories;
}

/// "hicolor" is the theme in which programs install their own icons; other themes redraw them.
QStringList themesIn(const QString& directory) {
  auto themes = QDir(directory).entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
  if (themes.removeAll(QStringLiteral("hicolor")) > 0) themes.prepend(QStringLiteral("hicolor"));
  return themes;
}

QImage readFirst(const QString& stem) {
  for (const auto* ending : endings) {
    const QString path = stem + QLatin1String(ending);
    if (!QFileInfo::exists(path)) continue;
    auto image = read(path);
    if (!image.isNull()) return image;
  }
  return {};
}

}  // namespace

QImage loadApplicationIcon(const QString& name) {
  if (name.isEmpty()) return {};
  if (QDir::isAbsolutePath(name)) return read(name);
  if (name.contains(QLatin1Char('/'))) return {};
  // Old entries name the file.
  QString stem = name;
  for (const auto* ending : endings) {
    if (stem.endsWith(QLatin1String(ending))) stem.chop(static_cast<int>(qstrlen(ending)));
  }
  for (const auto& directory : iconDirectories()) {
    for (const auto& theme : themesIn(directory)) {
      const QString base = directory + QLatin1Char('/') + theme + QLatin1Char('/');
      for (const auto* size : sizes) {
        // Themes order their folders either way round.
        for (const auto& folder : {QStringLiteral("%1/apps/"), QStringLiteral("apps/%1/")}) {
          auto image = readFirst(base + folder.arg(QLatin1String(size)) + stem);
          if (!image.isNull()) return image;
        }
      }
    }
  }
  for (const auto& directory :
       QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation)) {
    auto image = readFirst(directory + QLatin1String("/pixmaps/") + stem);
    if (!image.isNull()) return image;
  }
  return {};
}

}  // namespace zephyx
