#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QPointer>
#include <QtNetwork/QTcpServer>
#include <QtNetwork/QTcpSocket>
#include <memory>
#include <vector>

namespace zephyx {

/// A chat server on this computer, which sends byte for byte what the test says, and when.
class ChatTestServer {
 public:
  struct Connection {
    QTcpSocket* socket;
    QByteArray received;
    bool closedByPeer = false;

    /// Whether the request is here with all of its body.
    bool isComplete() const;
    QByteArray header(const QByteArray& name) const;
    QByteArray body() const;
    /// Sends at once, in a packet of its own.
    void send(const QByteArray& bytes);
    void beginStream() {
      send("HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nConnection: close\r\n\r\n");
    }
    void sendToken(const char* text);
    void answer(int status, const QByteArray& body, const QByteArray& headers = {});
    void close() { socket->disconnectFromHost(); }
  };

  ChatTestServer();

  QString address() const;
  /// Waits for the request number `index`, complete; null when it does not come.
  Connection* request(std::size_t index);
  std::size_t connections() const { return connections_.size(); }

 private:
  QTcpServer server_;
  std::vector<std::unique_ptr<Connection>> connections_;
};

}  // namespace zephyx
