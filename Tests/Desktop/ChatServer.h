#pragma once

#include "Tests/Desktop/HttpsServer.h"

namespace zephyx {

/// A server on the loopback that speaks the chat-completions protocol: answers each request with
/// the same pieces of text, as server-sent events. Ends with this object.
class ChatServer {
 public:
  explicit ChatServer(const std::vector<std::string>& pieces) {
    for (const auto& piece : pieces)
      events_ += "data: {\"choices\":[{\"delta\":{\"content\":\"" + piece + "\"}}]}\n\n";
    setHangs(false);
  }

  std::string address() const { return server_.address() + "/v1"; }
  int requests() const { return server_.requests(path); }
  /// What was asked last, as JSON.
  std::string question() const { return server_.lastBody(); }
  /// Requests that were answered to the last piece.
  int answered() const { return server_.answered(); }
  /// Answers whose reader went away.
  int abandoned() const { return server_.abandoned(); }
  /// Whether answers from now on have no end.
  void setHangs(bool hangs) {
    server_.set(path, {.headers = "Content-Type: text/event-stream\r\nConnection: close\r\n",
                       .body = events_ + (hangs ? "" : "data: [DONE]\n\n"),
                       .hangs = hangs});
  }

 private:
  static constexpr const char* path = "/v1/chat/completions";

  HttpsServer server_{{}, HttpsServer::Protocol::http};
  std::string events_;
};

}  // namespace zephyx
