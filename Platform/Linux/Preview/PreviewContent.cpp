#include "Platform/Linux/Preview/PreviewContent.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLocale>
#include <QtCore/QMimeDatabase>
#include <QtCore/QStringDecoder>
#include <QtCore/QUrl>
#include <QtGui/QImageReader>

namespace zephyx {
namespace {

constexpr qint64 textLimit = 256 * 1024;
constexpr qint64 quickLimit = 128 * 1024;
constexpr qint64 quickPixels = 1'000'000;

QString pathOf(const std::string& fileUrl) {
  return QUrl(QString::fromStdString(fileUrl)).toLocalFile();
}

QImage readImage(const QString& path, QSize limit) {
  QImageReader reader(path);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  // The file says how it lies; scaling comes before turning.
  if (reader.transformation() & QImageIOHandler::TransformationRotate90) limit.transpose();
  const QSize size = reader.size();
  if (size.isValid() && (size.width() > limit.width() || size.height() > limit.height())) {
    reader.setScaledSize(size.scaled(limit, Qt::KeepAspectRatio).expandedTo({1, 1}));
  }
  return reader.read();
}

/// The beginning of a file in UTF-8; nothing when it is not text.
std::optional<QString> readText(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) return std::nullopt;
  const QByteArray bytes = file.read(textLimit);
  if (bytes.contains('\0')) return std::nullopt;
  // A character that the limit cut in two is not an error: the decoder waits for its rest.
  QStringDecoder decoder(QStringDecoder::Utf8);
  QString text = decoder(bytes);
  if (decoder.hasError()) return std::nullopt;
  return text;
}

}  // namespace

PreviewContent PreviewContent::ofFile(const std::string& fileUrl, QSize limit) {
  const QString path = pathOf(fileUrl);
  const QFileInfo info(path);
  PreviewContent content;
  content.name = info.fileName();
  if (!info.exists()) {
    content.details = QStringLiteral("The file is no longer there");
    return content;
  }
  if (info.isDir()) {
    content.isFolder = true;
    const auto count = QDir(path).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).size();
    content.details = QStringLiteral("Folder, %1 items").arg(count);
    return content;
  }
  if (!info.isFile()) {
    content.details = QStringLiteral("Not a regular file");
    return content;
  }
  const QString size = QLocale().formattedDataSize(info.size());
  content.image = readImage(path, limit);
  if (content.image.isNull()) {
    if (auto text = readText(path)) {
      content.text = std::move(*text);
      content.isText = true;
    }
  }
  const auto type = QMimeDatabase().mimeTypeForFile(info);
  content.details = QStringLiteral("%1, %2").arg(type.comment(), size);
  return content;
}

bool PreviewContent::isQuick(const std::string& fileUrl) {
  const QFileInfo info(pathOf(fileUrl));
  if (info.isDir()) return true;
  if (info.size() > quickLimit) return false;
  // A small file may hold a large picture.
  const QSize size = QImageReader(info.filePath()).size();
  return !size.isValid() || qint64{size.width()} * size.height() <= quickPixels;
}

}  // namespace zephyx
