#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <variant>
#include <vector>

namespace zephyx {

/// One release in a feed, as the feed has it: nothing in it has been checked.
struct AppcastItem {
  QString version;         ///< to be compared
  QString displayVersion;  ///< to be read
  QString channel;         ///< empty for what everybody gets
  QString system;          ///< empty for macOS, as the format says
  QString minimumSystemVersion;
  QString notes;
  bool notesArePlain = false;  ///< else HTML
  QUrl notesLink;
  QUrl url;
  qint64 length = 0;  ///< bytes
  QByteArray signature;
};

/// A reason, in a sentence for the user, why something is not taken.
struct UpdateRefusal {
  QString text;
};

/// Reads a feed in the RSS format of update feeds. Refuses what is not well-formed, declares
/// entities, or is deeper or longer than a feed has reason to be. `base` is the feed's address.
std::variant<std::vector<AppcastItem>, UpdateRefusal> readAppcast(const QByteArray& feed,
                                                                  const QUrl& base);

}  // namespace zephyx
