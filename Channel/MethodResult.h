#pragma once

#include <functional>
#include <string>
#include <utility>
#include <variant>

#include "Channel/Value.h"

namespace zephyx {

struct MethodError {
  std::string code;
  std::string message;
  Value details;
  bool operator==(const MethodError&) const = default;
};
struct NotImplemented {
  bool operator==(const NotImplemented&) const = default;
};

/// How a call ended: a value, an error, or nobody knew the method.
using MethodReply = std::variant<Value, MethodError, NotImplemented>;

/// The answer to one call, to be given exactly once. Move-only; main thread. A second answer is an
/// error of ours (assertion; ignored in release builds). Dropped unanswered, it answers
/// not-implemented and reports the method through the channel's diagnostics.
class MethodResult {
 public:
  /// Receives the answer; null when the result was dropped unanswered.
  using Answer = std::function<void(const MethodReply*)>;

  explicit MethodResult(Answer answer) : answer_(std::move(answer)) {}
  MethodResult(MethodResult&&) noexcept;
  MethodResult& operator=(MethodResult&&) noexcept;
  MethodResult(const MethodResult&) = delete;
  MethodResult& operator=(const MethodResult&) = delete;
  ~MethodResult();

  void success(Value value = {});
  void error(std::string code, std::string message, Value details = {});
  void notImplemented();

 private:
  void answer(const MethodReply& reply);
  void drop();

  Answer answer_;
};

}  // namespace zephyx
