#include "Channel/MethodResult.h"

#include <cassert>
#include <utility>

namespace zephyx {

MethodResult::MethodResult(MethodResult&& other) noexcept
    : answer_(std::exchange(other.answer_, nullptr)) {}

MethodResult& MethodResult::operator=(MethodResult&& other) noexcept {
  if (this != &other) {
    drop();
    answer_ = std::exchange(other.answer_, nullptr);
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
  assert(answer_ && "a call was answered twice, or after its result had been handed on");
  if (const auto answer = std::exchange(answer_, nullptr)) answer(&reply);
}

void MethodResult::drop() {
  if (const auto answer = std::exchange(answer_, nullptr)) answer(nullptr);
}

}  // namespace zephyx
