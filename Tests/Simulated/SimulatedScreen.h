#pragma once

#include <iterator>

#include "Channel/MethodCall.h"
#include "Channel/MethodResult.h"
#include "Channel/StandardMethodCodec.h"
#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedMessenger.h"

namespace zephyx {

/// The program in an engine, speaking Flutter's standard method codec on one channel, in bytes: it
/// records the host's calls, answers them with null, and makes calls of its own.
class SimulatedScreen {
 public:
  static constexpr const char* channelName = "com.zephyx.app/menu";

  SimulatedScreen(SimulatedDispatch& dispatch, std::shared_ptr<SimulatedMessenger> messenger)
      : dispatch_(dispatch), messenger_(std::move(messenger)) {
    handler_ =
        messenger_->setMessageHandler(channelName, [this](BytesView message, BinaryReply reply) {
          const auto call = StandardMethodCodec::decodeCall(message);
          calls_.push_back(call.value_or(MethodCall{"(malformed)", {}}));
          reply(StandardMethodCodec::encodeReply(Value()));
        });
  }

  /// The host's calls since the last `takeCalls`.
  const std::vector<MethodCall>& calls() const { return calls_; }
  std::vector<MethodCall> takeCalls() { return std::exchange(calls_, {}); }
  std::vector<MethodCall> callsOf(const std::string& method) const {
    std::vector<MethodCall> found;
    std::copy_if(calls_.begin(), calls_.end(), std::back_inserter(found),
                 [&](const MethodCall& call) { return call.method == method; });
    return found;
  }

  using PendingReply = std::shared_ptr<std::optional<MethodReply>>;
  /// Sends a call; the reply appears in what is returned.
  PendingReply send(const std::string& method, const Value& arguments = {}) {
    return sendBytes(StandardMethodCodec::encodeCall(method, arguments));
  }
  PendingReply sendBytes(Bytes message) {
    auto pending = std::make_shared<std::optional<MethodReply>>();
    messenger_->send(channelName, std::move(message), [pending](BytesView reply) {
      *pending = reply.empty() ? MethodReply(NotImplemented())
                               : StandardMethodCodec::decodeReply(reply).value_or(
                                     MethodError{"(malformed)", "", {}});
    });
    return pending;
  }
  /// Sends a call and returns the reply once everything that is due now has run.
  std::optional<MethodReply> call(const std::string& method, const Value& arguments = {}) {
    const auto pending = send(method, arguments);
    dispatch_.settle();
    return *pending;
  }

  const std::shared_ptr<SimulatedMessenger>& messenger() const { return messenger_; }

 private:
  SimulatedDispatch& dispatch_;
  std::shared_ptr<SimulatedMessenger> messenger_;
  std::vector<MethodCall> calls_;
  Registration handler_;
};

}  // namespace zephyx
