#include "Tests/Fuzz/FuzzTargets.h"

#include "Channel/StandardMessageCodec.h"
#include "Channel/StandardMethodCodec.h"

namespace zephyx {
namespace {

// Bytes are compared, and values only where they equal themselves, because of NaN.
template <typename Decoded, typename Decode, typename Encode>
bool survives(const Decoded& decoded, const Decode& decode, const Encode& encode) {
  const Bytes encoded = encode(decoded);
  const auto again = decode(encoded);
  return again && encode(*again) == encoded && (!(decoded == decoded) || *again == decoded);
}

}  // namespace

const char* brokenCodecProperty(BytesView bytes) {
  if (const auto value = StandardMessageCodec::decode(bytes)) {
    if (!survives(*value, StandardMessageCodec::decode, StandardMessageCodec::encode)) {
      return "a value survives its encoding";
    }
  }
  if (const auto call = StandardMethodCodec::decodeCall(bytes)) {
    const auto encode = [](const MethodCall& made) {
      return StandardMethodCodec::encodeCall(made.method, made.arguments);
    };
    if (!survives(*call, StandardMethodCodec::decodeCall, encode)) {
      return "a call survives its encoding";
    }
  }
  if (const auto reply = StandardMethodCodec::decodeReply(bytes)) {
    if (!survives(*reply, StandardMethodCodec::decodeReply, StandardMethodCodec::encodeReply)) {
      return "a reply survives its encoding";
    }
  }
  return nullptr;
}

}  // namespace zephyx
