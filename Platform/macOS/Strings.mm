#import "Platform/macOS/Strings.h"

#include <cstddef>

namespace zephyx {
namespace {

/// Length of the well-formed UTF-8 sequence that `text` begins with, 0 when it begins with none.
std::size_t sequenceLength(std::string_view text) {
  const auto at = [&](std::size_t index) {
    return index < text.size() ? static_cast<unsigned char>(text[index]) : 0u;
  };
  const auto continues = [&](std::size_t index) { return (at(index) & 0xC0u) == 0x80u; };
  const unsigned first = at(0);
  const unsigned second = at(1);
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return continues(1) ? 2 : 0;
  if (first >= 0xE0 && first <= 0xEF) {
    const bool isOverlong = first == 0xE0 && second < 0xA0;
    const bool isSurrogate = first == 0xED && second > 0x9F;
    return continues(1) && continues(2) && !isOverlong && !isSurrogate ? 3 : 0;
  }
  if (first >= 0xF0 && first <= 0xF4) {
    const bool isOverlong = first == 0xF0 && second < 0x90;
    const bool isBeyondUnicode = first == 0xF4 && second > 0x8F;
    return continues(1) && continues(2) && continues(3) && !isOverlong && !isBeyondUnicode ? 4 : 0;
  }
  return 0;
}

std::string repaired(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const std::size_t length = sequenceLength(text);
    result += length == 0 ? std::string_view("\xEF\xBF\xBD") : text.substr(0, length);
    text.remove_prefix(length == 0 ? 1 : length);
  }
  return result;
}

NSString* decoded(std::string_view utf8) {
  return [[NSString alloc] initWithBytes:utf8.data()
                                  length:utf8.size()
                                encoding:NSUTF8StringEncoding];
}

}  // namespace

NSString* nsString(std::string_view utf8) {
  if (utf8.empty()) return @"";
  if (NSString* text = decoded(utf8)) return text;
  NSString* text = decoded(repaired(utf8));
  return text ? text : @"";
}

std::string utf8String(NSString* text) {
  // Not -UTF8String: it ends at the first NUL and gives nothing for half a surrogate pair.
  NSData* data = [text dataUsingEncoding:NSUTF8StringEncoding allowLossyConversion:YES];
  if (data.length == 0) return {};
  return std::string(static_cast<const char*>(data.bytes), data.length);
}

NSData* nsData(BytesView bytes) {
  return [NSData dataWithBytes:bytes.data() length:bytes.size()];
}

Bytes bytes(NSData* data) {
  if (data.length == 0) return {};
  const auto* first = static_cast<const std::uint8_t*>(data.bytes);
  return Bytes(first, first + data.length);
}

}  // namespace zephyx
