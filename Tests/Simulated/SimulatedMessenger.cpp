#include "Tests/Simulated/SimulatedMessenger.h"

#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedFaults.h"

namespace zephyx {

SimulatedMessenger::Pair SimulatedMessenger::makePair(SimulatedDispatch& dispatch,
                                                      SimulatedFaults& faults) {
  auto one = std::make_shared<SimulatedMessenger>(dispatch, faults);
  auto other = std::make_shared<SimulatedMessenger>(dispatch, faults);
  one->otherEnd_ = other;
  other->otherEnd_ = one;
  one->isOpen_ = other->isOpen_ = std::make_shared<bool>(true);
  return {one, other};
}

void SimulatedMessenger::send(const std::string& channel, Bytes message, BinaryReply reply) {
  dispatch_.requireMainThread("BinaryMessenger::send");
  dispatch_.mainQueue().async([isOpen = isOpen_, otherEnd = otherEnd_, channel,
                               message = std::move(message), reply = std::move(reply)] {
    const auto receiver = otherEnd.lock();
    if (*isOpen && receiver) receiver->deliver(channel, message, reply);
  });
}

void SimulatedMessenger::deliver(const std::string& channel, const Bytes& message,
                                 BinaryReply reply) {
  const auto answer = [isOpen = isOpen_, &dispatch = dispatch_, &faults = faults_, channel,
                       reply = std::move(reply),
                       answered = std::make_shared<bool>(false)](BytesView bytes) {
    if (std::exchange(*answered, true)) faults.add("a second reply on " + channel);
    if (!reply) return;
    dispatch.mainQueue().async([isOpen, reply, copy = Bytes(bytes.begin(), bytes.end())] {
      if (*isOpen) reply(copy);
    });
  };
  const auto found = handlers_->find(channel);
  if (found == handlers_->end()) {
    answer({});
    return;
  }
  const auto handle = found->second.handle;  // it may take itself off
  handle(message, answer);
}

Registration SimulatedMessenger::setMessageHandler(const std::string& channel,
                                                   BinaryMessageHandler handler) {
  dispatch_.requireMainThread("BinaryMessenger::setMessageHandler");
  const auto id = nextId_++;
  (*handlers_)[channel] = {id, std::move(handler)};
  return Registration([handlers = handlers_, channel, id] {
    const auto found = handlers->find(channel);
    if (found != handlers->end() && found->second.id == id) handlers->erase(found);
  });
}

void SimulatedMessenger::shutDown() {
  *isOpen_ = false;
}

}  // namespace zephyx
