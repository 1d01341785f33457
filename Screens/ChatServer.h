#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QUrl>
#include <variant>

namespace zephyx {

/// A server that speaks the chat-completions protocol.
struct ChatServer {
  QUrl endpoint;
  QString model;   ///< empty where the server has but one
  QByteArray key;  ///< empty for none
};

/// Where to send requests, from what the user typed: "host", "host/v1" or the whole address. In
/// words why it cannot be used otherwise: a key and a text go out in the clear to this computer
/// alone.
std::variant<QUrl, QString> chatEndpoint(const QString& address);

bool isLoopback(const QUrl& url);

/// Scheme, host and port: what a key belongs to.
QString chatOrigin(const QUrl& endpoint);

/// Whether it can stand in a request's header.
bool isUsableKey(const QByteArray& key);

}  // namespace zephyx
