#pragma once

#include <cstddef>
#include <string_view>

namespace zephyx {

/// What a line must contain, byte for byte, to be looked at.
inline constexpr std::string_view usageMention = R"("usage")";

/// Where the first mention begins; npos without one. The library's own search stops at every
/// quotation mark, of which session logs are full.
std::size_t findUsageMention(std::string_view text);

/// Where the last line of `text` begins: behind the last line feed, else at 0.
std::size_t beginningOfLastLine(std::string_view text);

}  // namespace zephyx
