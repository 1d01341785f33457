#pragma once

#include <atomic>
#include <string>
#include <thread>
#include <vector>

namespace zephyx {

/// A server on the loopback that speaks the chat-completions protocol: answers one request after
/// the other with the same pieces of text, as server-sent events. Ends with this object.
class ChatServer {
 public:
  /// With `hangs`, an answer never ends by itself.
  explicit ChatServer(std::vector<std::string> pieces, bool hangs = false);
  ChatServer(const ChatServer&) = delete;
  ChatServer& operator=(const ChatServer&) = delete;
  ~ChatServer();

  std::string address() const;
  int requests() const { return requests_; }
  /// Requests that were answered to the last piece.
  int answered() const { return answered_; }
  /// Answers whose reader went away.
  int abandoned() const { return abandoned_; }
  /// Settled before the next request.
  void setHangs(bool hangs) { hangs_ = hangs; }

 private:
  void run();
  void serve(int client);

  std::vector<std::string> pieces_;
  std::atomic<bool> hangs_;
  std::atomic<bool> isEnding_ = false;
  std::atomic<int> requests_ = 0;
  std::atomic<int> answered_ = 0;
  std::atomic<int> abandoned_ = 0;
  int listener_ = -1;
  int port_ = 0;
  std::thread thread_;
};

}  // namespace zephyx
