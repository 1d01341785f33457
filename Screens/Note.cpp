#include "Screens/Note.h"

namespace zephyx {
namespace {

constexpr int titleCharacters = 80;
constexpr int snippetCharacters = 120;

}  // namespace

QString noteTitle(const QString& text) {
  const QString title = text.trimmed().section('\n', 0, 0).trimmed().left(titleCharacters);
  return title.isEmpty() ? QStringLiteral("New note") : title;
}

QString noteSnippet(const QString& text) {
  return text.trimmed().section('\n', 1).simplified().left(snippetCharacters);
}

}  // namespace zephyx
