#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zephyx {

/// A URL or relative reference that obeys the generic syntax.
struct Url {
  std::string text;    ///< as given, with non-ASCII characters percent-encoded
  std::string scheme;  ///< lower case; empty for a relative reference
  std::string path;    ///< percent-decoded

  /// Nothing for an empty string, and for one with spaces, control characters, broken percent
  /// escapes, or characters that a URL cannot hold.
  static std::optional<Url> parse(std::string_view text);
};

/// Percent-encodes everything that may not stand in a URL's path as it is.
std::string percentEncodedPath(std::string_view path);

}  // namespace zephyx
