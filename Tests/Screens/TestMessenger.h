#pragma once

#include <QtCore/QObject>
#include <map>
#include <memory>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// One of two ends; what one sends reaches the other's handler from the event loop.
class TestMessenger : public BinaryMessenger {
 public:
  static void join(const std::shared_ptr<TestMessenger>& a,
                   const std::shared_ptr<TestMessenger>& b) {
    a->other_ = b;
    b->other_ = a;
  }

  void send(const std::string& channel, Bytes message, BinaryReply reply) override {
    later([channel, message = std::move(message), reply = std::move(reply), from = other_] {
      if (const auto end = from.lock()) end->deliver(channel, message, reply);
    });
  }

  Registration setMessageHandler(const std::string& channel,
                                 BinaryMessageHandler handler) override {
    const int token = ++lastToken_;
    handlers_[channel] = {token, std::move(handler)};
    return Registration([this, channel, token] {
      if (handlers_[channel].first == token) handlers_.erase(channel);
    });
  }

 private:
  template <typename Function>
  void later(Function function) {
    QMetaObject::invokeMethod(&context_, std::move(function), Qt::QueuedConnection);
  }

  void deliver(const std::string& channel, const Bytes& message, const BinaryReply& reply) {
    const auto found = handlers_.find(channel);
    const auto answer = [this, reply](BytesView bytes) {
      if (!reply) return;
      later([reply, copy = Bytes(bytes.begin(), bytes.end())] { reply(copy); });
    };
    if (found == handlers_.end()) return answer({});
    const auto handler = found->second.second;
    handler(message, answer);
  }

  QObject context_;
  std::weak_ptr<TestMessenger> other_;
  std::map<std::string, std::pair<int, BinaryMessageHandler>> handlers_;
  int lastToken_ = 0;
};

}  // namespace zephyx
