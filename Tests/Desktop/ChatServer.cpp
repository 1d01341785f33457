#include "Tests/Desktop/ChatServer.h"

#include <arpa/inet.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <stdexcept>

namespace zephyx {
namespace {

constexpr int patience = 50;  // milliseconds between two looks at the end

bool isReadable(int descriptor) {
  pollfd watched{descriptor, POLLIN, 0};
  return poll(&watched, 1, patience) > 0;
}

void sendAll(int client, const std::string& text) {
  (void)send(client, text.data(), text.size(), MSG_NOSIGNAL);
}

}  // namespace

ChatServer::ChatServer(std::vector<std::string> pieces, bool hangs)
    : pieces_(std::move(pieces)), hangs_(hangs), listener_(socket(AF_INET, SOCK_STREAM, 0)) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  socklen_t length = sizeof address;
  auto* generic = reinterpret_cast<sockaddr*>(&address);
  if (bind(listener_, generic, length) != 0 || listen(listener_, 4) != 0 ||
      getsockname(listener_, generic, &length) != 0)
    throw std::runtime_error("no server on the loopback");
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { run(); });
}

ChatServer::~ChatServer() {
  isEnding_ = true;
  thread_.join();
  close(listener_);
}

std::string ChatServer::address() const {
  return "http://127.0.0.1:" + std::to_string(port_) + "/v1";
}

void ChatServer::run() {
  while (!isEnding_) {
    if (!isReadable(listener_)) continue;
    const int client = accept(listener_, nullptr, nullptr);
    if (client < 0) continue;
    serve(client);
    close(client);
  }
}

void ChatServer::serve(int client) {
  std::string request;
  char buffer[4096];
  // The body is JSON, whose end is the last brace.
  while (!isEnding_ && !request.ends_with('}')) {
    if (!isReadable(client)) continue;
    const auto count = recv(client, buffer, sizeof buffer, 0);
    if (count <= 0) return;
    request.append(buffer, static_cast<std::size_t>(count));
  }
  ++requests_;
  sendAll(client,
          "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\nConnection: close\r\n\r\n");
  for (const auto& piece : pieces_)
    sendAll(client, "data: {\"choices\":[{\"delta\":{\"content\":\"" + piece + "\"}}]}\n\n");
  while (hangs_ && !isEnding_) {
    if (!isReadable(client)) continue;
    if (recv(client, buffer, sizeof buffer, 0) <= 0) {
      ++abandoned_;
      return;
    }
  }
  sendAll(client, "data: [DONE]\n\n");
  ++answered_;
}

}  // namespace zephyx
