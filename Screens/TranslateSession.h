#pragma once

#include <QtCore/QString>

namespace zephyx {

enum class TranslatePhase { waiting, empty, generating, done, stopped, failed };

QString phaseName(TranslatePhase phase);

/// One text and what became of it.
struct TranslateSession {
  QString mode = QStringLiteral("translate");
  QString source = QStringLiteral("external");
  QString text;
  QString requestedText;  ///< what the result was made of
  QString result;
  TranslatePhase phase = TranslatePhase::waiting;
  QString errorCode;
  QString errorMessage;

  /// The result with the white space around it that the text had, so that it fits in its place.
  QString replacement() const;
};

}  // namespace zephyx
