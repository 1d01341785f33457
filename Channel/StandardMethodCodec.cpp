#include "Channel/StandardMethodCodec.h"

#include "Channel/MessageReader.h"
#include "Channel/MessageWriter.h"

namespace zephyx {
namespace {

constexpr std::uint8_t successEnvelope = 0;
constexpr std::uint8_t errorEnvelope = 1;

bool readError(MessageReader& reader, MethodError& error) {
  std::string_view code;
  Value message;
  if (!reader.readText(code) || !reader.readValue(message)) return false;
  error.code = code;
  // Dart may leave the message out.
  if (auto* text = std::get_if<std::string>(&message.storage())) {
    error.message = std::move(*text);
  } else if (!message.isNull()) {
    return false;
  }
  return reader.readValue(error.details);
}

}  // namespace

Bytes StandardMethodCodec::encodeCall(std::string_view method, const Value& arguments) {
  return writeMessage([&](auto& writer) {
    writer.writeString(method);
    writer.writeValue(arguments);
  });
}

std::optional<MethodCall> StandardMethodCodec::decodeCall(BytesView bytes) {
  std::optional<MethodCall> call(std::in_place);
  MessageReader reader(bytes);
  std::string_view method;
  if (reader.readText(method) && reader.readValue(call->arguments) && reader.atEnd()) {
    call->method = MethodName(method);
  } else {
    call.reset();
  }
  return call;
}

Bytes StandardMethodCodec::encodeReply(const MethodReply& reply) {
  if (std::holds_alternative<NotImplemented>(reply)) return {};
  return writeMessage([&](auto& writer) {
    if (const auto* value = std::get_if<Value>(&reply)) {
      writer.writeByte(successEnvelope);
      writer.writeValue(*value);
    } else if (const auto* error = std::get_if<MethodError>(&reply)) {
      writer.writeByte(errorEnvelope);
      writer.writeString(error->code);
      writer.writeString(error->message);
      writer.writeValue(error->details);
    }
  });
}

std::optional<MethodReply> StandardMethodCodec::decodeReply(BytesView bytes) {
  if (bytes.empty()) return NotImplemented{};
  std::optional<MethodReply> reply(std::in_place);
  MessageReader reader(bytes);
  std::uint8_t envelope = 0;
  bool complete = reader.readByte(envelope);
  if (envelope == successEnvelope) {
    complete = complete && reader.readValue(std::get<Value>(*reply));
  } else {
    complete =
        complete && envelope == errorEnvelope && readError(reader, reply->emplace<MethodError>());
  }
  if (!complete || !reader.atEnd()) reply.reset();
  return reply;
}

}  // namespace zephyx
