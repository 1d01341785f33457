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
  ChannelLog log;
};

MethodError malformed(std::string_view what) {
  return {std::string(malformedCode), std::string(what), {}};
}

void receive(const std::shared_ptr<const Receiver>& receiver, BytesView message,
             BinaryReply reply) {
  constexpr std::string_view malformedCall = "malformed call";
  auto call = StandardMethodCodec::decodeCall(message);
  if (!call) {
    receiver->log.report(malformedCall);
    reply(StandardMethodCodec::encodeReply(malformed(malformedCall)));
    return;
  }
  MethodResult result(call->method, std::move(reply), {receiver, &receiver->log});
  receiver->handler(*std::move(call), std::move(result));
}

}  // namespace

MethodChannel::MethodChannel(const std::shared_ptr<BinaryMessenger>& messenger, std::string name,
                             Diagnostics diagnostics)
    : messenger_(messenger), log_{std::move(name), std::move(diagnostics)} {}

void MethodChannel::invokeMethod(std::string_view method, const Value& arguments) {
  invokeMethod(method, arguments, {});
}

void MethodChannel::invokeMethod(std::string_view method, const Value& arguments,
                                 ReplyHandler reply) {
  const auto messenger = messenger_.lock();
  if (!messenger) return;
  BinaryReply binaryReply;
  if (reply) {
    binaryReply = [reply = std::move(reply), log = log_,
                   method = std::string(method)](BytesView bytes) {
      auto decoded = StandardMethodCodec::decodeReply(bytes);
      if (decoded) {
        reply(*std::move(decoded));
      } else {
        constexpr std::string_view malformedReply = "malformed reply";
        log.report(malformedReply, method);
        reply(malformed(malformedReply));
      }
    };
  }
  messenger->send(log_.channel, StandardMethodCodec::encodeCall(method, arguments),
                  std::move(binaryReply));
}

void MethodChannel::setMethodCallHandler(Handler handler) {
  const auto messenger = messenger_.lock();
  if (!handler || !messenger) {
    handler_.reset();
    return;
  }
  auto receiver = std::make_shared<const Receiver>(Receiver{std::move(handler), log_});
  handler_ = messenger->setMessageHandler(
      log_.channel, [receiver = std::move(receiver)](BytesView message, BinaryReply reply) {
        // A copy, because the handler may take itself off during the call.
        receive(std::shared_ptr(receiver), message, std::move(reply));
      });
}

}  // namespace zephyx
