#pragma once

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// The other side of a channel: records what is sent, and delivers what the test sends.
class FakeMessenger : public BinaryMessenger, public std::enable_shared_from_this<FakeMessenger> {
 public:
  struct Sent {
    std::string channel;
    Bytes message;
    BinaryReply reply;
  };

  void send(const std::string& channel, Bytes message, BinaryReply reply) override {
    sent.push_back({channel, std::move(message), std::move(reply)});
  }

  Registration setMessageHandler(const std::string& channel,
                                 BinaryMessageHandler handler) override {
    const int id = ++lastId_;
    handlers_[channel] = {id, std::move(handler)};
    return Registration([self = weak_from_this(), channel, id] {
      const auto messenger = self.lock();
      if (!messenger) return;
      const auto found = messenger->handlers_.find(channel);
      if (found != messenger->handlers_.end() && found->second.first == id) {
        messenger->handlers_.erase(found);
      }
    });
  }

  /// Delivers a message; its answers so far can be seen in `answers`.
  void deliver(const std::string& channel, const Bytes& message) {
    const auto found = handlers_.find(channel);
    if (found == handlers_.end()) {
      answers.emplace_back();
      return;
    }
    found->second.second(message, [self = weak_from_this()](BytesView answer) {
      if (const auto messenger = self.lock()) {
        messenger->answers.emplace_back(answer.begin(), answer.end());
      }
    });
  }

  std::vector<Sent> sent;
  std::vector<Bytes> answers;

 private:
  std::map<std::string, std::pair<int, BinaryMessageHandler>> handlers_;
  int lastId_ = 0;
};

}  // namespace zephyx
