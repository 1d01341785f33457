#pragma once

#include <optional>

#include "Channel/Value.h"
#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Flutter's standard message codec, to the byte. Decoding trusts nothing: lengths are checked
/// against the bytes that are left before memory is reserved, nesting is limited to `maximumDepth`,
/// strings must be valid UTF-8, and bytes left over are an error.
class StandardMessageCodec {
 public:
  static constexpr int maximumDepth = 64;

  static Bytes encode(const Value& value);
  /// Nothing for malformed bytes. No bytes at all decode to null.
  static std::optional<Value> decode(BytesView bytes);
};

}  // namespace zephyx
