#include "Screens/TranslateSession.h"

#include <algorithm>

namespace zephyx {

QString phaseName(TranslatePhase phase) {
  switch (phase) {
    case TranslatePhase::waiting:
      return QStringLiteral("waiting");
    case TranslatePhase::empty:
      return QStringLiteral("empty");
    case TranslatePhase::generating:
      return QStringLiteral("generating");
    case TranslatePhase::done:
      return QStringLiteral("done");
    case TranslatePhase::stopped:
      return QStringLiteral("stopped");
    case TranslatePhase::failed:
      return QStringLiteral("failed");
  }
  return {};
}

QString TranslateSession::replacement() const {
  const auto isSpace = [](QChar c) { return c.isSpace(); };
  const auto first = std::find_if_not(requestedText.begin(), requestedText.end(), isSpace);
  const auto last = std::find_if_not(requestedText.rbegin(), requestedText.rend(), isSpace);
  return requestedText.left(first - requestedText.begin()) + result.trimmed() +
         requestedText.right(last - requestedText.rbegin());
}

}  // namespace zephyx
