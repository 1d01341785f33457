#include "Platform/Linux/Clipboard/SelectionText.h"

#include <array>
#include <cstdint>
#include <string_view>

#include "Channel/Utf8.h"
#include "Platform/Linux/Clipboard/TargetNames.h"

namespace zephyx {
namespace {

constexpr std::string_view replacement = "\xEF\xBF\xBD";

std::uint8_t byteAt(std::string_view text, std::size_t index) {
  return static_cast<std::uint8_t>(text[index]);
}

std::size_t sequenceLength(std::uint8_t lead) {
  return lead < 0x80 ? 1 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
}

void appendUtf8(std::string& text, std::uint32_t codePoint) {
  const auto add = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
  if (codePoint < 0x80) {
    add(codePoint);
  } else if (codePoint < 0x800) {
    add(0xC0 | codePoint >> 6);
    add(0x80 | (codePoint & 0x3F));
  } else if (codePoint < 0x10000) {
    add(0xE0 | codePoint >> 12);
    add(0x80 | (codePoint >> 6 & 0x3F));
    add(0x80 | (codePoint & 0x3F));
  } else {
    add(0xF0 | codePoint >> 18);
    add(0x80 | (codePoint >> 12 & 0x3F));
    add(0x80 | (codePoint >> 6 & 0x3F));
    add(0x80 | (codePoint & 0x3F));
  }
}

// Calls `use` with each code point of valid UTF-8.
template <typename Use>
void forEachCodePoint(const std::string& text, Use use) {
  constexpr std::array<std::uint32_t, 5> leadBits{0, 0x7F, 0x1F, 0x0F, 0x07};
  for (std::size_t i = 0; i < text.size();) {
    const auto length = sequenceLength(byteAt(text, i));
    std::uint32_t codePoint = byteAt(text, i) & leadBits[length];
    for (std::size_t next = i + 1; next < i + length; ++next) {
      codePoint = codePoint << 6 | (byteAt(text, next) & 0x3Fu);
    }
    use(codePoint);
    i += length;
  }
}

std::string utf8FromLatin1(std::string_view latin1) {
  std::string text;
  text.reserve(latin1.size() + latin1.size() / 8);
  for (const char c : latin1) appendUtf8(text, static_cast<std::uint8_t>(c));
  return text;
}

// Some programs hand over UTF-8 where the format says UTF-16; that has no zero bytes.
std::string utf8FromUtf16(std::string_view raw) {
  if (raw.find('\0') == std::string_view::npos && isValidUtf8(raw)) return std::string(raw);
  const bool isBigEndian = raw.starts_with("\xFE\xFF");
  const auto unitAt = [&](std::size_t index) {
    const std::uint32_t first = byteAt(raw, index);
    const std::uint32_t second = byteAt(raw, index + 1);
    return isBigEndian ? first << 8 | second : second << 8 | first;
  };
  std::string text;
  for (std::size_t i = 0; i + 1 < raw.size(); i += 2) {
    std::uint32_t unit = unitAt(i);
    if (unit == 0xFEFF) continue;
    if (unit >= 0xD800 && unit < 0xDC00 && i + 3 < raw.size()) {
      const auto low = unitAt(i + 2);
      if (low >= 0xDC00 && low < 0xE000) {
        unit = 0x10000 + ((unit - 0xD800) << 10) + (low - 0xDC00);
        i += 2;
      }
    }
    appendUtf8(text, unit >= 0xD800 && unit < 0xE000 ? 0xFFFD : unit);
  }
  return text;
}

std::string_view trimmed(std::string_view line) {
  constexpr std::string_view blanks(" \t\r\n\0", 5);
  const auto first = line.find_first_not_of(blanks);
  if (first == std::string_view::npos) return {};
  return line.substr(first, line.find_last_not_of(blanks) - first + 1);
}

// The first line that says something; `skipped` such lines are passed over before.
std::string contentLine(std::string_view text, int skipped = 0) {
  while (!text.empty()) {
    const auto end = text.find('\n');
    const auto line = trimmed(text.substr(0, end));
    text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    if (line.empty() || line.front() == '#') continue;
    if (skipped-- == 0) return std::string(line);
  }
  return {};
}

// "file:/path" and "file://localhost/path" are other spellings of "file:///path".
std::string withPlainFileScheme(std::string url) {
  constexpr std::string_view localhost = "file://localhost/";
  constexpr std::string_view plain = "file:///";
  constexpr std::string_view brief = "file:/";
  std::string start = url.substr(0, localhost.size());
  for (char& c : start) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;

  std::size_t length = 0;
  if (start.starts_with(localhost)) {
    length = localhost.size();
  } else if (start.starts_with(plain)) {
    length = plain.size();
  } else if (start.starts_with(brief) && !start.starts_with("file://")) {
    length = brief.size();
  }
  return length > 0 ? url.replace(0, length, plain) : url;
}

std::string decoded(const std::string& target, std::string raw) {
  if (target == selectionTarget::latin1String) return utf8FromLatin1(raw);
  if (target == selectionTarget::mozillaUrl) return contentLine(utf8FromUtf16(raw));
  if (target == selectionTarget::netscapeUrl) return contentLine(raw);
  if (target == selectionTarget::uriList) return withPlainFileScheme(contentLine(raw));
  // The first line says whether the files were copied or cut.
  if (target == selectionTarget::copiedFiles) return withPlainFileScheme(contentLine(raw, 1));
  if (target == selectionTarget::plainText && !isValidUtf8(raw)) return utf8FromLatin1(raw);
  return raw;
}

}  // namespace

std::optional<std::string> selectionText(const std::string& target, std::string raw) {
  auto text = decoded(target, std::move(raw));
  while (!text.empty() && text.back() == '\0')
    text.pop_back();  // from programs that count C's zero
  if (text.empty()) return std::nullopt;
  return withoutMalformedUtf8(std::move(text));
}

bool isLocalFileUrl(const std::string& url) {
  return url.starts_with("file:///");
}

std::string withoutMalformedUtf8(std::string text) {
  if (isValidUtf8(text)) return text;
  std::string valid;
  valid.reserve(text.size() + text.size() / 8);
  const std::string_view view = text;
  for (std::size_t i = 0; i < view.size();) {
    const auto sequence = view.substr(i, sequenceLength(byteAt(view, i)));
    if (isValidUtf8(sequence)) {
      valid += sequence;
      i += sequence.size();
    } else {
      valid += replacement;
      ++i;
    }
  }
  return valid;
}

std::string latin1FromUtf8(const std::string& text) {
  std::string latin1;
  latin1.reserve(text.size());
  forEachCodePoint(text, [&latin1](std::uint32_t codePoint) {
    latin1 += codePoint < 0x100 ? static_cast<char>(codePoint) : '?';
  });
  return latin1;
}

std::string utf16FromUtf8(const std::string& text) {
  std::string utf16;
  const auto add = [&utf16](std::uint32_t unit) {
    utf16 += static_cast<char>(unit & 0xFF);
    utf16 += static_cast<char>(unit >> 8);
  };
  forEachCodePoint(text, [&add](std::uint32_t codePoint) {
    if (codePoint < 0x10000) return add(codePoint);
    add(0xD800 + ((codePoint - 0x10000) >> 10));
    add(0xDC00 + ((codePoint - 0x10000) & 0x3FF));
  });
  return utf16;
}

}  // namespace zephyx
