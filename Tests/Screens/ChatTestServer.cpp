#include "Tests/Screens/ChatTestServer.h"

#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtNetwork/QHostAddress>

#include "Tests/Screens/TestWorld.h"

namespace zephyx {

ChatTestServer::ChatTestServer() {
  server_.listen(QHostAddress::LocalHost);
  QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
    while (QTcpSocket* socket = server_.nextPendingConnection()) {
      socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
      auto* connection =
          connections_.emplace_back(std::make_unique<Connection>(Connection{socket, {}})).get();
      QObject::connect(socket, &QTcpSocket::readyRead, &server_,
                       [connection] { connection->received += connection->socket->readAll(); });
      QObject::connect(socket, &QTcpSocket::disconnected, &server_,
                       [connection] { connection->closedByPeer = true; });
    }
  });
}

QString ChatTestServer::address() const {
  return QStringLiteral("http://127.0.0.1:%1").arg(server_.serverPort());
}

ChatTestServer::Connection* ChatTestServer::request(std::size_t index) {
  const bool came =
      waitFor([&] { return connections_.size() > index && connections_[index]->isComplete(); });
  return came ? connections_[index].get() : nullptr;
}

bool ChatTestServer::Connection::isComplete() const {
  return received.contains("\r\n\r\n") && body().size() >= header("content-length").toInt();
}

QByteArray ChatTestServer::Connection::header(const QByteArray& name) const {
  for (const QByteArray& line : received.left(received.indexOf("\r\n\r\n")).split('\n')) {
    const auto colon = line.indexOf(':');
    if (colon > 0 && line.left(colon).toLower() == name) return line.mid(colon + 1).trimmed();
  }
  return {};
}

QByteArray ChatTestServer::Connection::body() const {
  return received.mid(received.indexOf("\r\n\r\n") + 4);
}

void ChatTestServer::Connection::send(const QByteArray& bytes) {
  socket->write(bytes);
  socket->flush();
}

void ChatTestServer::Connection::sendToken(const char* text) {
  const QByteArray content = QJsonDocument(QJsonObject{{"content", QString::fromUtf8(text)}})
                                 .toJson(QJsonDocument::Compact);
  send("data: {\"choices\":[{\"index\":0,\"delta\":" + content + "}]}\n\n");
}

void ChatTestServer::Connection::answer(int status, const QByteArray& body,
                                        const QByteArray& headers) {
  send("HTTP/1.1 " + QByteArray::number(status) +
       " Status\r\nConnection: close\r\nContent-Length: " + QByteArray::number(body.size()) +
       "\r\n" + headers + "\r\n" + body);
}

}  // namespace zephyx
