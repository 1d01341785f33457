#include "Screens/ClipboardEntry.h"

#include <utility>

namespace zephyx {
namespace {

constexpr int previewCharacters = 1000;

std::optional<std::string> takeString(Map& map, std::string_view key) {
  Value* value = map.find(key);
  auto* text = value ? std::get_if<std::string>(&value->storage()) : nullptr;
  return text ? std::optional(std::move(*text)) : std::nullopt;
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

std::optional<CapturedEntry> CapturedEntry::fromMessage(Value message) {
  auto* map = std::get_if<Map>(&message.storage());
  auto kind = map ? takeString(*map, "type") : std::nullopt;
  if (!kind || kind->empty()) return std::nullopt;
  CapturedEntry captured;
  captured.text = takeString(*map, "text").value_or(std::string());
  captured.entry = {
      .kind = *std::move(kind),
      .preview = beginningOf(captured.text, previewCharacters),
      .textBytes = static_cast<std::int64_t>(captured.text.size()),
      .filePath = takeString(*map, "filePath"),
      .imageBlobPath = takeString(*map, "imageBlobPath"),
      .thumbnailPath = takeString(*map, "thumbnailPath"),
      .byteSize = integerAt(*map, "byteSize"),
      .width = integerAt(*map, "width"),
      .height = integerAt(*map, "height"),
      .sourceAppName = takeString(*map, "sourceAppName"),
      .sourceAppBundleId = takeString(*map, "sourceAppBundleId"),
      .sourceAppIconPath = takeString(*map, "sourceAppIconPath"),
      .copiedAtEpochMs = integerAt(*map, "copiedAtEpochMs").value_or(0),
  };
  return captured;
}

}  // namespace zephyx
