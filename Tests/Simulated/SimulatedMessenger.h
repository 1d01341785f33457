#pragma once

#include "Platform/BinaryMessenger.h"
#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedFaults.h"

namespace zephyx {

/// One of the two ends of an engine's messages. Messages and replies arrive in the next turns of
/// the main queue.
class SimulatedMessenger final : public BinaryMessenger {
 public:
  using Pair = std::pair<std::shared_ptr<SimulatedMessenger>, std::shared_ptr<SimulatedMessenger>>;
  static Pair makePair(SimulatedDispatch& dispatch, SimulatedFaults& faults) {
    auto one = std::make_shared<SimulatedMessenger>(dispatch, faults);
    auto other = std::make_shared<SimulatedMessenger>(dispatch, faults);
    one->otherEnd_ = other;
    other->otherEnd_ = one;
    one->isOpen_ = other->isOpen_ = std::make_shared<bool>(true);
    return {one, other};
  }

  SimulatedMessenger(SimulatedDispatch& dispatch, SimulatedFaults& faults)
      : dispatch_(dispatch), faults_(faults) {}

  void send(const std::string& channel, Bytes message, BinaryReply reply) override {
    dispatch_.requireMainThread("BinaryMessenger::send");
    dispatch_.mainQueue().async([isOpen = isOpen_, otherEnd = otherEnd_, channel,
                                 message = std::move(message), reply = std::move(reply)] {
      const auto receiver = otherEnd.lock();
      if (*isOpen && receiver) receiver->deliver(channel, message, reply);
    });
  }
  Registration setMessageHandler(const std::string& channel,
                                 BinaryMessageHandler handler) override {
    dispatch_.requireMainThread("BinaryMessenger::setMessageHandler");
    const auto id = nextId_++;
    (*handlers_)[channel] = {id, std::move(handler)};
    return Registration([handlers = handlers_, channel, id] {
      const auto found = handlers->find(channel);
      if (found != handlers->end() && found->second.id == id) handlers->erase(found);
    });
  }

  /// Ends both directions at both ends; what is under way is dropped.
  void shutDown() { *isOpen_ = false; }
  bool hasHandlers() const { return !handlers_->empty(); }

 private:
  struct Handler {
    std::uint64_t id;
    BinaryMessageHandler handle;
  };
  using Handlers = std::map<std::string, Handler>;

  void deliver(const std::string& channel, const Bytes& message, BinaryReply reply) {
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

  SimulatedDispatch& dispatch_;
  SimulatedFaults& faults_;
  std::weak_ptr<SimulatedMessenger> otherEnd_;
  std::shared_ptr<bool> isOpen_;
  std::shared_ptr<Handlers> handlers_ = std::make_shared<Handlers>();
  std::uint64_t nextId_ = 0;
};

}  // namespace zephyx
