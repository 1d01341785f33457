#include "Screens/ChatStream.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtNetwork/QNetworkAccessManager>
#include <QtNetwork/QNetworkReply>
#include <QtNetwork/QNetworkRequest>
#include <algorithm>
#include <utility>

#include "Screens/TextCleaning.h"

namespace zephyx {
namespace {

constexpr qsizetype bufferSize = 64 * 1'024;
constexpr qsizetype longestRefusal = 16 * 1'024;
/// For the rest of an answer that is an error in any case.
constexpr auto refusalTime = std::chrono::milliseconds(3'000);
constexpr qsizetype longestReceived = 64 * 1'024 * 1'024;
constexpr qsizetype longestText = 400'000;
constexpr qsizetype longestWords = 240;

QNetworkRequest makeRequest(const ChatServer& server) {
  QNetworkRequest request(server.endpoint);
  request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
  request.setRawHeader("Accept", "text/event-stream");
  // A packed answer could grow beyond all bounds, and comes in larger pieces.
  request.setRawHeader("Accept-Encoding", "identity");
  request.setRawHeader("User-Agent", "Zephyx");
  if (isUsableKey(server.key)) request.setRawHeader("Authorization", "Bearer " + server.key);
  // What goes out is meant for this server alone.
  request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                       QNetworkRequest::ManualRedirectPolicy);
  // Its many requests share one connection, which would stay when a request is ended.
  request.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  for (const auto attribute :
       {QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::CookieSaveControlAttribute,
        QNetworkRequest::AuthenticationReuseAttribute})
    request.setAttribute(attribute, QNetworkRequest::Manual);
  return request;
}

QByteArray makeBody(const ChatServer& server, const ChatMessages& messages) {
  QJsonObject body{
      {"stream", true},
      {"messages", QJsonArray{QJsonObject{{"role", "system"}, {"content", messages.system}},
                              QJsonObject{{"role", "user"}, {"content", messages.user}}}}};
  if (!server.model.isEmpty()) body["model"] = server.model;
  return QJsonDocument(body).toJson(QJsonDocument::Compact);
}

QString bounded(const QString& words) {
  const QString line = withoutControls(words).simplified();
  return line.size() <= longestWords ? line : line.left(longestWords) + u'…';
}

// Servers put their words into "error.message", "error", "message" or "detail".
QString serverWords(const QJsonObject& object) {
  const QJsonValue error = object["error"];
  for (const QJsonValue& value : {error["message"], error, object["message"], object["detail"]})
    if (value.isString() && !value.toString().isEmpty()) return bounded(value.toString());
  return {};
}

QString serverWords(const QByteArray& body) {
  const QJsonDocument document = QJsonDocument::fromJson(body);
  if (document.isObject()) return serverWords(document.object());
  const QString text = QString::fromUtf8(body).trimmed();
  return text.startsWith('<') ? QString() : bounded(text);
}

}  // namespace

ChatStream::ChatStream(QNetworkAccessManager& network, const ChatServer& server,
                       const ChatMessages& messages, ChatPatience patience, QObject* parent)
    : QObject(parent),
      patience_(patience),
      host_(server.endpoint.authority()),
      events_([this](const QByteArray& data) { return take(data); }) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, [this] {
    if (!refusal_.isEmpty()) return failStatus();
    fail("timeout", sent_ ? tr("The server at %1 stopped answering.").arg(host_)
                          : tr("The server at %1 does not answer.").arg(host_));
  });
  timer_.start(patience_.connect);
  reply_ = network.post(makeRequest(server), makeBody(server, messages));
  reply_->setReadBufferSize(bufferSize);
  connect(reply_, &QNetworkReply::requestSent, this, [this] {
    sent_ = true;
    timer_.start(patience_.silence);
  });
  connect(reply_, &QNetworkReply::readyRead, this, &ChatStream::read);
  connect(reply_, &QNetworkReply::finished, this, &ChatStream::end);
}

ChatStream::~ChatStream() {
  stop();
}

void ChatStream::stop() {
  ended_ = true;
  timer_.stop();
  if (!reply_) return;
  QNetworkReply* reply = std::exchange(reply_, nullptr);
  reply->disconnect(this);
  reply->abort();
  reply->deleteLater();
}

int ChatStream::status() const {
  return reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

void ChatStream::read() {
  if (ended_) return;
  if (const int code = status(); code < 200 || code > 299) return readRefusal();
  timer_.start(patience_.silence);
  while (!ended_ && reply_->bytesAvailable() > 0) {
    const QByteArray bytes = reply_->read(bufferSize);
    received_ += bytes.size();
    if (received_ > longestReceived || !events_.feed(bytes))
      return fail("too_long", tr("The server sent more than can be taken."));
  }
}

void ChatStream::readRefusal() {
  if (refusal_.isEmpty()) timer_.start(std::min(refusalTime, patience_.silence));
  while (!ended_ && reply_->bytesAvailable() > 0) {
    const QByteArray bytes = reply_->read(bufferSize);
    received_ += bytes.size();
    refusal_ += bytes.left(longestRefusal - refusal_.size());
    if (received_ > longestReceived) failStatus();
  }
}

void ChatStream::end() {
  if (ended_) return;
  const int code = status();
  if (code == 0) return failConnection();
  read();
  if (ended_) return;
  if (code < 200 || code > 299) return failStatus();
  events_.finish();
  if (ended_) return;
  if (hasReason_) return complete();
  if (!hasEvents_ && reply_->error() == QNetworkReply::NoError)
    return fail("malformed",
                tr("What %1 answered is not a stream. Is the address right?").arg(host_));
  fail("interrupted", tr("The connection was lost in the middle of the answer."));
}

bool ChatStream::take(const QByteArray& data) {
  hasEvents_ = true;
  if (data.trimmed() == "[DONE]") {
    complete();
    return false;
  }
  const QJsonDocument document = QJsonDocument::fromJson(data);
  if (!document.isObject()) {
    fail("malformed", tr("The server sent something that is not an answer."));
    return false;
  }
  const QJsonObject object = document.object();
  if (const QJsonValue error = object["error"]; !error.isUndefined() && !error.isNull()) {
    const QString words = serverWords(object);
    fail("server", words.isEmpty() ? tr("The server reported an error.")
                                   : tr("The server reported: %1").arg(words));
    return false;
  }
  const QJsonValue choice = object["choices"][0];
  if (choice["finish_reason"].isString()) hasReason_ = true;
  return takePiece(choice["delta"]["content"].toString());
}

bool ChatStream::takePiece(QString piece) {
  if (!heldSurrogate_.isEmpty()) piece.prepend(std::exchange(heldSurrogate_, {}));
  if (!piece.isEmpty() && piece.back().isHighSurrogate()) {
    heldSurrogate_ = piece.last(1);
    piece.chop(1);
  }
  if (std::exchange(afterReturn_, piece.endsWith('\r')) && piece.startsWith('\n'))
    piece.remove(0, 1);
  piece = withoutControls(piece);
  if (piece.isEmpty()) return true;
  characters_ += piece.size();
  if (characters_ > longestText) {
    fail("too_long", tr("The answer is longer than can be taken."));
    return false;
  }
  emit token(piece);
  return !ended_;
}

void ChatStream::complete() {
  stop();
  emit finished();
}

void ChatStream::fail(const char* code, const QString& message) {
  stop();
  emit failed(QLatin1String(code), message);
}

void ChatStream::failConnection() {
  switch (reply_->error()) {
    case QNetworkReply::ConnectionRefusedError:
      return fail("connection", tr("Nothing answers at %1. Is the server running?").arg(host_));
    case QNetworkReply::HostNotFoundError:
      return fail("connection", tr("There is no server named %1.").arg(host_));
    case QNetworkReply::SslHandshakeFailedError:
      return fail(
          "connection",
          tr("There is no safe connection to %1: %2").arg(host_, bounded(reply_->errorString())));
    case QNetworkReply::RemoteHostClosedError:
      return fail("interrupted", tr("%1 closed the connection without an answer.").arg(host_));
    default:
      return fail("connection",
                  tr("The connection to %1 failed: %2").arg(host_, bounded(reply_->errorString())));
  }
}

void ChatStream::failStatus() {
  const int code = status();
  const QString words = serverWords(refusal_);
  const QString ending = words.isEmpty() ? QStringLiteral(".") : ": " + words;
  if (code == 401 || code == 403)
    return fail("refused", tr("The server refused the key (%1)").arg(code) + ending);
  if (code >= 300 && code < 400)
    return fail("status", tr("The server sends its visitors elsewhere (%1). Enter the address that "
                             "it names.")
                              .arg(code));
  fail("status", tr("The server answered with status %1").arg(code) + ending);
}

}  // namespace zephyx
