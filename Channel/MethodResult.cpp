#include "Channel/MethodResult.h"

#include <cassert>
#include <utility>

#include "Channel/StandardMethodCodec.h"

namespace zephyx {

MethodResult::MethodResult(std::string_view method, BinaryReply reply,
                           std::shared_ptr<const ChannelLog> log)
    : method_(method), reply_(std::move(reply)), log_(std::move(log)) {}

MethodResult::MethodResult(MethodResult&& other) noexcept
    : method_(other.method_),
      reply_(std::exchange(other.reply_, nullptr)),
      log_(std::move(other.log_)) {}

MethodResult& MethodResult::operator=(MethodResult&& other) noexcept {
  if (this != &other) {
    drop();
    method_ = other.method_;
    reply_ = std::exchange(other.reply_, nullptr);
    log_ = std::move(other.log_);
  }
  return *this;
}

MethodResult::~MethodResult() {
  drop();
}

void MethodResult::success(Value value) {
  answer(std::move(value));
}

void MethodResult::error(std::string code, std::string message, Value details) {
  answer(MethodError{std::move(code), std::move(message), std::move(details)});
}

void MethodResult::notImplemented() {
  answer(NotImplemented{});
}

void MethodResult::answer(const MethodReply& reply) {
  assert(reply_ && "a call was answered twice, or after its result had been handed on");
  const auto send = std::exchange(reply_, nullptr);
  if (!send) return;
  // Most calls are answered with null: its bytes are always the same.
  static const Bytes nullSuccess = StandardMethodCodec::encodeReply(Value());
  const auto* value = std::get_if<Value>(&reply);
  if (value && value->isNull()) return send(nullSuccess);
  send(StandardMethodCodec::encodeReply(reply));
}

void MethodResult::drop() {
  if (!reply_) return;
  log_->report("call dropped unanswered", method_.text());
  std::exchange(reply_, nullptr)({});  // no bytes: not implemented
}

}  // namespace zephyx
