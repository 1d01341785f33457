#include "Screens/ClipboardEntry.h"

namespace zephyx {
namespace {

constexpr int previewCharacters = 1000;

std::optional<std::string> stringAt(const Map& map, std::string_view key) {
  const Value* value = map.find(key);
  const std::string* text = value ? value->asString() : nullptr;
  return text ? std::optional(*text) : std::nullopt;
}

std::optional<std::int64_t> integerAt(const Map& map, std::string_view key) {
  const Value* value = map.find(key);
  return value ? value->asInteger() : std::nullopt;
}

bool continuesCharacter(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

std::string beginningOf(std::string_view text, int characters) {
  std::size_t end = 0;
  for (; characters > 0 && end < text.size(); --characters) {
    ++end;
    while (end < text.size() && continuesCharacter(text[end])) ++end;
  }
  return std::string(text.substr(0, end));
}

}  // namespace

std::optional<CapturedEntry> CapturedEntry::fromMessage(const Value& message) {
  const Map* map = message.asMap();
  const auto kind = map ? stringAt(*map, "type") : std::nullopt;
  if (!kind || kind->empty()) return std::nullopt;
  CapturedEntry captured;
  captured.text = stringAt(*map, "text").value_or("");
  captured.entry = {
      .kind = *kind,
      .preview = beginningOf(captured.text, previewCharacters),
      .textBytes = static_cast<std::int64_t>(captured.text.size()),
      .filePath = stringAt(*map, "filePath"),
      .imageBlobPath = stringAt(*map, "imageBlobPath"),
      .thumbnailPath = stringAt(*map, "thumbnailPath"),
      .byteSize = integerAt(*map, "byteSize"),
      .width = integerAt(*map, "width"),
      .height = integerAt(*map, "height"),
      .sourceAppName = stringAt(*map, "sourceAppName"),
      .sourceAppBundleId = stringAt(*map, "sourceAppBundleId"),
      .sourceAppIconPath = stringAt(*map, "sourceAppIconPath"),
      .copiedAtEpochMs = integerAt(*map, "copiedAtEpochMs").value_or(0),
  };
  return captured;
}

}  // namespace zephyx
