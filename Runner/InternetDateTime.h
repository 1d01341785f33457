#pragma once

#include <optional>
#include <string_view>

namespace zephyx {

/// Seconds since 1970 of an ISO 8601 internet date-time with or without fractional seconds, such as
/// 2025-01-01T10:00:00.123Z or 2025-01-01T12:00:00+02:00. Nothing for any other text. Any thread.
std::optional<double> parseInternetDateTime(std::string_view text);

}  // namespace zephyx
