#include "Screens/TextCleaning.h"

namespace zephyx {

QString withoutControls(const QString& text) {
  QString clean;
  clean.reserve(text.size());
  for (qsizetype at = 0; at < text.size(); ++at) {
    const QChar c = text[at];
    if (c == '\r') {
      clean += '\n';
      if (at + 1 < text.size() && text[at + 1] == '\n') ++at;
    } else if (c == '\n' || c == '\t' || c.category() != QChar::Other_Control) {
      clean += c;
    }
  }
  return clean;
}

}  // namespace zephyx
