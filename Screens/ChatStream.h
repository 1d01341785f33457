#pragma once

#include <QtCore/QObject>
#include <QtCore/QTimer>
#include <chrono>

#include "Screens/ChatServer.h"
#include "Screens/EventStream.h"

class QNetworkAccessManager;
class QNetworkReply;

namespace zephyx {

struct ChatPatience {
  std::chrono::milliseconds connect{15'000};
  /// Between two signs of life. A model on this computer may have to be loaded first.
  std::chrono::milliseconds silence{90'000};
};

struct ChatMessages {
  QString system;
  QString user;
};

/// One request to a chat server and its answer, in pieces. Trusts nothing of what comes. Ending the
/// object ends the request. Main thread; signals come from the event loop, and exactly one of
/// `finished` and `failed` ends them.
class ChatStream : public QObject {
  Q_OBJECT

 public:
  ChatStream(QNetworkAccessManager& network, const ChatServer& server, const ChatMessages& messages,
             ChatPatience patience, QObject* parent = nullptr);
  ~ChatStream() override;

  /// Closes the connection. No signal comes any more.
  void stop();

 signals:
  void token(const QString& text);
  void finished();
  /// `code`: "refused", "status", "connection", "interrupted", "timeout", "malformed", "server" or
  /// "too_long".
  void failed(const QString& code, const QString& message);

 private:
  void read();
  void readRefusal();
  void end();
  bool take(const QByteArray& data);
  bool takePiece(QString piece);
  void complete();
  void fail(const char* code, const QString& message);
  void failConnection();
  void failStatus();
  int status() const;

  QNetworkReply* reply_ = nullptr;
  ChatPatience patience_;
  QString host_;
  EventStream events_;
  QTimer timer_;
  QByteArray refusal_;  ///< what came with another status than success
  qsizetype received_ = 0;
  qsizetype characters_ = 0;
  QString heldSurrogate_;     ///< the first half of a character that came in two pieces
  bool afterReturn_ = false;  ///< the last piece ended with a carriage return
  bool sent_ = false;
  bool hasEvents_ = false;
  bool hasReason_ = false;  ///< the server said why the text ends here
  bool ended_ = false;
};

}  // namespace zephyx
