#include "Platform/Linux/Engines/LinuxBinaryMessenger.h"

#include "Platform/Dispatch.h"

namespace zephyx {

LinuxBinaryMessenger::Pair LinuxBinaryMessenger::makePair(DispatchQueue& mainQueue) {
  const auto wire = std::make_shared<Wire>(Wire{mainQueue});
  Pair ends{std::make_shared<LinuxBinaryMessenger>(wire),
            std::make_shared<LinuxBinaryMessenger>(wire)};
  ends.first->peer_ = ends.second;
  ends.second->peer_ = ends.first;
  return ends;
}

void LinuxBinaryMessenger::send(const std::string& channel, Bytes message, BinaryReply reply) {
  if (wire_->isCut) return;
  wire_->queue.async([wire = wire_, peer = peer_, channel, message = std::move(message),
                      reply = std::move(reply)]() mutable {
    if (wire->isCut) return;
    auto back = reply ? replyThrough(wire, std::move(reply)) : BinaryReply([](BytesView) {});
    if (const auto receiver = peer.lock()) {
      receiver->receive(channel, message, std::move(back));
    } else {
      back({});
    }
  });
}

BinaryReply LinuxBinaryMessenger::replyThrough(const std::shared_ptr<Wire>& wire,
                                               BinaryReply reply) {
  return [wire, reply = std::move(reply)](BytesView answer) mutable {
    if (wire->isCut) return;
    wire->queue.async([wire, reply = std::exchange(reply, nullptr),
                       answer = Bytes(answer.begin(), answer.end())] {
      if (!wire->isCut && reply) reply(answer);
    });
  };
}

void LinuxBinaryMessenger::receive(const std::string& channel, BytesView message,
                                   BinaryReply reply) {
  const auto found = handlers_.find(channel);
  if (found == handlers_.end()) return reply({});
  // Kept for the time of the call: the handler may replace itself.
  const Handler handler = found->second;
  (*handler)(message, std::move(reply));
}

Registration LinuxBinaryMessenger::setMessageHandler(const std::string& channel,
                                                     BinaryMessageHandler handler) {
  const auto current = std::make_shared<BinaryMessageHandler>(std::move(handler));
  handlers_[channel] = current;
  return Registration([weakSelf = weak_from_this(), channel, mine = std::weak_ptr(current)] {
    const auto self = weakSelf.lock();
    const auto ended = mine.lock();
    if (!self || !ended) return;
    const auto found = self->handlers_.find(channel);
    if (found != self->handlers_.end() && found->second == ended) self->handlers_.erase(found);
  });
}

}  // namespace zephyx
