#pragma once

#include <optional>
#include <string>

namespace zephyx {

/// The text that an owner handed over for a target, as valid UTF-8: character sets are converted, a
/// list of URIs gives its first one. Malformed sequences are replaced. Nothing when no text is
/// left.
std::optional<std::string> selectionText(const std::string& target, std::string raw);

/// True for a URL of a file of this machine, as `selectionText` gives it.
bool isLocalFileUrl(const std::string& url);

/// Valid UTF-8: `text` itself where it is, with U+FFFD in the place of what is malformed otherwise.
std::string withoutMalformedUtf8(std::string text);

/// ISO Latin-1, with a question mark for what it does not have. `text` is valid UTF-8.
std::string latin1FromUtf8(const std::string& text);

/// Little-endian UTF-16 without a mark. `text` is valid UTF-8.
std::string utf16FromUtf8(const std::string& text);

}  // namespace zephyx
