#pragma once

#include <optional>

#include "Channel/MethodCall.h"
#include "Channel/MethodResult.h"
#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Flutter's standard method codec: method calls and reply envelopes on the standard message codec.
class StandardMethodCodec {
 public:
  static Bytes encodeCall(std::string_view method, const Value& arguments);
  static std::optional<MethodCall> decodeCall(BytesView bytes);

  /// Not-implemented is the empty envelope.
  static Bytes encodeReply(const MethodReply& reply);
  static std::optional<MethodReply> decodeReply(BytesView bytes);
};

}  // namespace zephyx
