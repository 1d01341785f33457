#include "Tests/Simulated/SimulatedScreen.h"

#include <algorithm>
#include <iterator>

#include "Channel/StandardMethodCodec.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

SimulatedScreen::SimulatedScreen(SimulatedDispatch& dispatch,
                                 std::shared_ptr<SimulatedMessenger> messenger)
    : dispatch_(dispatch), messenger_(std::move(messenger)) {
  handler_ =
      messenger_->setMessageHandler(channelName, [this](BytesView message, BinaryReply reply) {
        const auto call = StandardMethodCodec::decodeCall(message);
        calls_.push_back(call.value_or(MethodCall{"(malformed)", {}}));
        reply(StandardMethodCodec::encodeReply(Value()));
      });
}

std::vector<MethodCall> SimulatedScreen::callsOf(const std::string& method) const {
  std::vector<MethodCall> found;
  std::copy_if(calls_.begin(), calls_.end(), std::back_inserter(found),
               [&](const MethodCall& call) { return call.method == method; });
  return found;
}

SimulatedScreen::PendingReply SimulatedScreen::send(const std::string& method,
                                                    const Value& arguments) {
  return sendBytes(StandardMethodCodec::encodeCall(method, arguments));
}

SimulatedScreen::PendingReply SimulatedScreen::sendBytes(Bytes message) {
  auto pending = std::make_shared<std::optional<MethodReply>>();
  messenger_->send(channelName, std::move(message), [pending](BytesView reply) {
    *pending =
        reply.empty()
            ? MethodReply(NotImplemented())
            : StandardMethodCodec::decodeReply(reply).value_or(MethodError{"(malformed)", "", {}});
  });
  return pending;
}

std::optional<MethodReply> SimulatedScreen::call(const std::string& method,
                                                 const Value& arguments) {
  const auto pending = send(method, arguments);
  dispatch_.settle();
  return *pending;
}

}  // namespace zephyx
