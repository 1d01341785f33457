#pragma once

#include <string>

namespace zephyx {

// Times as a clock on the user's wall shows them. Empty for what no clock can show. Main thread.

/// "17:05".
std::string hourAndMinute(double secondsSince1970);
/// "Fri 17:05"; in English.
std::string weekdayHourAndMinute(double secondsSince1970);

}  // namespace zephyx
