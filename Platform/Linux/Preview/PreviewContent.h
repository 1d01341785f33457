#pragma once

#include <QtCore/QSize>
#include <QtCore/QString>
#include <QtGui/QImage>
#include <string>

namespace zephyx {

/// What a preview shows of a file: its picture, its text, or at least what it is.
struct PreviewContent {
  QString name;
  QString details;  ///< kind and size in words
  QImage image;
  QString text;
  bool isText = false;
  bool isFolder = false;

  /// Reads a file named by a file URL; pictures are scaled down to `limit`. Any thread.
  static PreviewContent ofFile(const std::string& fileUrl, QSize limit);
  /// True when reading it takes no noticeable time.
  static bool isQuick(const std::string& fileUrl);
};

}  // namespace zephyx
