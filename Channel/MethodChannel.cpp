#include "Channel/MethodChannel.h"

#include <algorithm>
#include <array>
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

/// The beginning of a name, for the log: kept without an allocation.
class ShortName {
 public:
  explicit ShortName(std::string_view name) : size_(std::min(name.size(), characters_.size())) {
    std::copy_n(name.begin(), size_, characters_.begin());
  }
  std::string_view text() const { return {characters_.data(), size_}; }

 private:
  std::array<char, 48> characters_;
  std::size_t size_;
};

/// Most calls are answered with null: its bytes are always the same.
void finish(const BinaryReply& reply, const MethodReply& outcome) {
  static const Bytes nullSuccess = StandardMethodCodec::encodeReply(Value());
  const auto* value = std::get_if<Value>(&outcome);
  if (value && value->isNull()) return reply(nullSuccess);
  reply(StandardMethodCodec::encodeReply(outcome));
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
  MethodResult result([receiver, reply = std::move(reply),
                       method = ShortName(call->method)](const MethodReply* outcome) {
    if (!outcome) {
      report(receiver->diagnostics, receiver->channel, "call dropped unanswered", method.text());
    }
    static const MethodReply notImplemented = NotImplemented{};
    finish(reply, outcome ? *outcome : notImplemented);
  });
  receiver->handler(*std::move(call), std::move(result));
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
