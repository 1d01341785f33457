#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <utility>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

class SimulatedDispatch;
class SimulatedFaults;

/// One of the two ends of an engine's messages. Messages and replies arrive in the next turns of
/// the main queue.
class SimulatedMessenger final : public BinaryMessenger {
 public:
  using Pair = std::pair<std::shared_ptr<SimulatedMessenger>, std::shared_ptr<SimulatedMessenger>>;
  static Pair makePair(SimulatedDispatch& dispatch, SimulatedFaults& faults);

  SimulatedMessenger(SimulatedDispatch& dispatch, SimulatedFaults& faults)
      : dispatch_(dispatch), faults_(faults) {}

  void send(const std::string& channel, Bytes message, BinaryReply reply) override;
  Registration setMessageHandler(const std::string& channel, BinaryMessageHandler handler) override;

  /// Ends both directions at both ends; what is under way is dropped.
  void shutDown();
  bool hasHandlers() const { return !handlers_->empty(); }

 private:
  struct Handler {
    std::uint64_t id;
    BinaryMessageHandler handle;
  };
  using Handlers = std::map<std::string, Handler>;

  void deliver(const std::string& channel, const Bytes& message, BinaryReply reply);

  SimulatedDispatch& dispatch_;
  SimulatedFaults& faults_;
  std::weak_ptr<SimulatedMessenger> otherEnd_;
  std::shared_ptr<bool> isOpen_;
  std::shared_ptr<Handlers> handlers_ = std::make_shared<Handlers>();
  std::uint64_t nextId_ = 0;
};

}  // namespace zephyx
