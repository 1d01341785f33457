#include "Runner/Url.h"

#include <algorithm>
#include <cstddef>

namespace zephyx {
namespace {

constexpr std::string_view pathPunctuation = "!$&'()*+,-./:=@_~";
constexpr std::string_view otherUrlPunctuation = ";?#[]";

bool isLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}
bool isDigit(char c) {
  return c >= '0' && c <= '9';
}
bool isAscii(char c) {
  return static_cast<unsigned char>(c) < 0x80;
}
bool contains(std::string_view set, char c) {
  return set.find(c) != std::string_view::npos;
}

int hexadecimalDigit(char c) {
  if (isDigit(c)) return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

void appendPercentEncoded(std::string& out, char c) {
  constexpr const char* digits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(c);
  out += '%';
  out += digits[byte >> 4];
  out += digits[byte & 15];
}

bool isPercentEscape(std::string_view text, std::size_t at) {
  return at + 2 < text.size() && hexadecimalDigit(text[at + 1]) >= 0 &&
         hexadecimalDigit(text[at + 2]) >= 0;
}

std::string percentDecoded(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '%' && isPercentEscape(text, i)) {
      out += static_cast<char>(hexadecimalDigit(text[i + 1]) * 16 + hexadecimalDigit(text[i + 2]));
      i += 2;
    } else {
      out += text[i];
    }
  }
  return out;
}

/// The characters that the generic syntax allows anywhere, with non-ASCII ones encoded.
std::optional<std::string> encodedIfAllowed(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (!isAscii(c)) {
      appendPercentEncoded(out, c);
    } else if (isLetter(c) || isDigit(c) || contains(pathPunctuation, c) ||
               contains(otherUrlPunctuation, c) || (c == '%' && isPercentEscape(text, i))) {
      out += c;
    } else {
      return std::nullopt;
    }
  }
  return out;
}

/// Brackets stand only around an IP literal; the port is a number.
bool isAuthority(std::string_view authority) {
  const auto user = authority.rfind('@');
  auto host = user == std::string_view::npos ? authority : authority.substr(user + 1);
  std::size_t portColon = host.rfind(':');
  if (!host.empty() && host.front() == '[') {
    const auto close = host.find(']');
    if (close == std::string_view::npos) return false;
    if (close + 1 < host.size() && host[close + 1] != ':') return false;
    portColon = close + 1 < host.size() ? close + 1 : std::string_view::npos;
  } else if (contains(host, '[') || contains(host, ']')) {
    return false;
  }
  if (portColon == std::string_view::npos) return true;
  const auto port = host.substr(portColon + 1);
  return std::all_of(port.begin(), port.end(), isDigit);
}

}  // namespace

std::optional<Url> Url::parse(std::string_view text) {
  if (text.empty()) return std::nullopt;
  auto encoded = encodedIfAllowed(text);
  if (!encoded) return std::nullopt;

  Url url;
  url.text = std::move(*encoded);
  std::string_view rest = url.text;

  const auto colon = rest.find(':');
  if (colon != std::string_view::npos && colon < rest.find_first_of("/?#")) {
    const auto scheme = rest.substr(0, colon);
    if (scheme.empty() || !isLetter(scheme.front())) return std::nullopt;
    for (const char c : scheme) {
      if (!isLetter(c) && !isDigit(c) && !contains("+-.", c)) return std::nullopt;
      url.scheme += isLetter(c) ? static_cast<char>(c | 0x20) : c;
    }
    rest.remove_prefix(colon + 1);
  }
  rest = rest.substr(0, rest.find('#'));
  rest = rest.substr(0, rest.find('?'));
  if (rest.starts_with("//")) {
    rest.remove_prefix(2);
    const auto slash = std::min(rest.find('/'), rest.size());
    if (!isAuthority(rest.substr(0, slash))) return std::nullopt;
    rest.remove_prefix(slash);
  }
  if (rest.find_first_of("[]") != std::string_view::npos) return std::nullopt;
  url.path = percentDecoded(rest);
  return url;
}

std::string percentEncodedPath(std::string_view path) {
  std::string out;
  for (const char c : path) {
    if (isLetter(c) || isDigit(c) || contains(pathPunctuation, c)) {
      out += c;
    } else {
      appendPercentEncoded(out, c);
    }
  }
  return out;
}

}  // namespace zephyx
