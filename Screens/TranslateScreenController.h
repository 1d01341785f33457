#pragma once

#include <QtQml/qqmlregistration.h>
#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <QtCore/QVariantList>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "Channel/MethodChannel.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Linux/Engines/ScreenProgram.h"
#include "Screens/PasteShortcut.h"
#include "Screens/ScreenSettings.h"
#include "Screens/TranslateSession.h"
#include "Screens/UpdateNotice.h"

namespace zephyx {

/// The panel of the AI actions without its picture: one text, what was asked for it, and the answer
/// as it comes. Works from its construction on, whether or not there is a picture. Main thread.
class TranslateScreenController : public QObject {
  Q_OBJECT
  QML_NAMED_ELEMENT(TranslateController)
  QML_UNCREATABLE("made by the program")
  Q_PROPERTY(zephyx::UpdateNotice* updates READ updates CONSTANT)
  Q_PROPERTY(zephyx::ScreenSettings* settings READ settings CONSTANT)
  Q_PROPERTY(QString mode READ mode NOTIFY sessionChanged)
  Q_PROPERTY(bool fromEditor READ fromEditor NOTIFY sessionChanged)
  /// "waiting" for a text, "empty" without one, "generating", "done", "stopped" or "failed".
  Q_PROPERTY(QString phase READ phase NOTIFY sessionChanged)
  Q_PROPERTY(QString errorCode READ errorCode NOTIFY sessionChanged)
  Q_PROPERTY(QString errorMessage READ errorMessage NOTIFY sessionChanged)
  Q_PROPERTY(bool hasResult READ hasResult NOTIFY sessionChanged)
  Q_PROPERTY(bool edited READ edited NOTIFY sessionChanged)
  Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
  Q_PROPERTY(QVariantList choices READ choices NOTIFY choicesChanged)
  Q_PROPERTY(QString choice READ choice WRITE setChoice NOTIFY choicesChanged)
  Q_PROPERTY(bool mayPaste READ mayPaste NOTIFY mayPasteChanged)
  Q_PROPERTY(QString message READ message WRITE setMessage NOTIFY messageChanged)

 public:
  explicit TranslateScreenController(ScreenServices services);
  ~TranslateScreenController() override;

  UpdateNotice* updates() { return &updates_; }
  ScreenSettings* settings() { return &settings_; }
  QString mode() const { return session_.mode; }
  bool fromEditor() const { return session_.source == "editor"; }
  QString phase() const { return phaseName(session_.phase); }
  QString errorCode() const { return session_.errorCode; }
  QString errorMessage() const { return session_.errorMessage; }
  bool hasResult() const { return !session_.result.trimmed().isEmpty(); }
  /// The text is another one than the result was made of.
  bool edited() const { return session_.text != session_.requestedText; }
  QString text() const { return session_.text; }
  void setText(const QString& text);
  /// Maps of "id" and "label": languages or tones; none where there is nothing to choose.
  QVariantList choices() const;
  QString choice() const;
  /// Is remembered, and begins anew.
  void setChoice(const QString& id);
  bool mayPaste() const { return mayPaste_; }
  QString message() const { return message_; }
  void setMessage(const QString& message);

  /// The whole of it, for a picture that begins.
  Q_INVOKABLE QString result() const { return session_.result; }
  Q_INVOKABLE void run();
  Q_INVOKABLE void stop();
  Q_INVOKABLE void paste();
  Q_INVOKABLE void acceptToEditor();
  /// All of the result when `selection` is empty.
  Q_INVOKABLE void copy(const QString& selection);
  Q_INVOKABLE void dismiss();
  Q_INVOKABLE void setWide(bool wide);
  Q_INVOKABLE void reportReady();
  Q_INVOKABLE void reportCards(const QVariantList& rectangles, qreal cornerRadius);
  /// A generation that nobody sees any more is ended.
  Q_INVOKABLE void setVisible(bool visible);

 signals:
  void sessionChanged();
  void textChanged();
  void choicesChanged();
  void mayPasteChanged();
  void messageChanged();
  /// Another text or an earlier session; the picture reports when it has laid it out.
  void sessionBegan();
  void resultReset();
  void resultAppended(const QString& piece);
  void focusWanted();

 private:
  void handle(const MethodCall& call, MethodResult result);
  void show(const Map& message);
  void panelShown();
  void restoreLast(const Map& message);
  void takeToken(const Map& message);
  void takeError(const Map& message);
  bool isCurrent(const Map& message) const;
  void beginSession(TranslateSession session);
  void endGeneration(TranslatePhase phase);
  void flushPending();
  void checkPermission();
  void setMayPaste(bool mayPaste);

  ScreenSettings settings_;
  std::function<void(std::string)> writeClipboardText_;
  TranslateSession session_;
  std::optional<TranslateSession> last_;
  std::int64_t gen_ = 0;
  bool restoring_ = false;
  bool visible_ = true;
  bool pasting_ = false;
  bool mayPaste_ = true;
  QString message_;
  QString pending_;  ///< came in since the picture was last told
  QTimer pendingTimer_;
  Value cards_;
  PasteShortcut pasteShortcut_;
  MethodChannel channel_;
  UpdateNotice updates_;
  LifetimeGuard guard_;
};

}  // namespace zephyx
