#pragma once

#include <QtCore/QString>
#include <cstdint>

namespace zephyx {

struct Note {
  std::int64_t id = 0;
  QString text;
  std::int64_t modifiedEpochMs = 0;
};

/// The first line that is not blank.
QString noteTitle(const QString& text);
/// What follows the title, on one line.
QString noteSnippet(const QString& text);

}  // namespace zephyx
