#include "Channel/MethodChannel.h"

#include <utility>

#include "Channel/StandardMethodCodec.h"

namespace zephyx {
namespace {

constexpr std::string_view malformedCode = "malformed";

// What an incoming call needs, shared so that it outlasts a channel or a handler that ends during
// the call.
struct Receiver {
  MethodChannel::Handler handler;
  std::string channel;
  MethodChannel::Diagnostics diagnostics;
};

void report(const MethodChannel::Diagnostics& diagnostics, std::string_view channel,
            std::string_view what, std::string_view method = {}) {
  if (!diagnostics) return;
  std::string line("[Channel] ");
  line.append(channel).append(": ").append(what);
  if (!method.empty()) line.append(": ").append(method);
  diagnostics(line);
}

MethodError malformed(std::string_view what) {
  return {std::string(malformedCode), std::string(what), {}};
}

void receive(const std::shared_ptr<const Receiver>& receiver, BytesView message,
             BinaryReply reply) {
  constexpr std::string_view malformedCall = "malformed call";
  auto call = StandardMethodCodec::decodeCall(message);
  if (!call) {
    report(receiver->diagnostics, receiver->channel, malformedCall);
    reply(StandardMethodCodec::encodeReply(malformed(malformedCall)));
    return;
  }
  auto answer = [reply = std::move(reply)](const MethodReply& outcome) {
    reply(StandardMethodCodec::encodeReply(outcome));
  };
  auto dropped = [receiver, method = call->method] {
    report(receiver->diagnostics, receiver->channel, "call dropped unanswered", method);
  };
  receiver->handler(*std::move(call), MethodResult(std::move(answer), std::move(dropped)));
}

}  // namespace

MethodChannel::MethodChannel(const std::shared_ptr<BinaryMessenger>& messenger, std::string name,
                             Diagnostics diagnostics)
    : messenger_(messenger), name_(std::move(name)), diagnostics_(std::move(diagnostics)) {}

void MethodChannel::invokeMethod(std::string_view method, const Value& arguments) {
  invokeMethod(method, arguments, {});
}

void MethodChannel::invokeMethod(std::string_view method, const Value& arguments,
                                 ReplyHandler reply) {
  const auto messenger = messenger_.lock();
  if (!messenger) return;
  BinaryReply binaryReply;
  if (reply) {
    binaryReply = [reply = std::move(reply), diagnostics = diagnostics_, channel = name_,
                   method = std::string(method)](BytesView bytes) {
      auto decoded = StandardMethodCodec::decodeReply(bytes);
      if (decoded) {
        reply(*std::move(decoded));
      } else {
        constexpr std::string_view malformedReply = "malformed reply";
        report(diagnostics, channel, malformedReply, method);
        reply(malformed(malformedReply));
      }
    };
  }
  messenger->send(name_, StandardMethodCodec::encodeCall(method, arguments),
                  std::move(binaryReply));
}

void MethodChannel::setMethodCallHandler(Handler handler) {
  const auto messenger = messenger_.lock();
  if (!handler || !messenger) {
    handler_.reset();
    return;
  }
  auto receiver =
      std::make_shared<const Receiver>(Receiver{std::move(handler), name_, diagnostics_});
  handler_ = messenger->setMessageHandler(
      name_, [receiver = std::move(receiver)](BytesView message, BinaryReply reply) {
        // A copy, because the handler may take itself off during the call.
        receive(std::shared_ptr(receiver), message, std::move(reply));
      });
}

}  // namespace zephyx
