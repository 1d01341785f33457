#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <variant>

#include "Channel/ChannelLog.h"
#include "Channel/ShortName.h"
#include "Channel/Value.h"
#include "Platform/BinaryMessenger.h"

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
  /// `reply` is not empty and takes the bytes of the answer.
  MethodResult(std::string_view method, BinaryReply reply, std::shared_ptr<const ChannelLog> log);
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

  ShortName method_;
  BinaryReply reply_;
  std::shared_ptr<const ChannelLog> log_;
};

}  // namespace zephyx
