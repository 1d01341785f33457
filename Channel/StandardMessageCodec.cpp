#include "Channel/StandardMessageCodec.h"

#include "Channel/MessageReader.h"
#include "Channel/MessageWriter.h"

namespace zephyx {

Bytes StandardMessageCodec::encode(const Value& value) {
  return writeMessage([&](auto& writer) { writer.writeValue(value); });
}

std::optional<Value> StandardMessageCodec::decode(BytesView bytes) {
  std::optional<Value> value(std::in_place);
  if (bytes.empty()) return value;
  MessageReader reader(bytes);
  if (!reader.readValue(*value) || !reader.atEnd()) value.reset();
  return value;
}

}  // namespace zephyx
