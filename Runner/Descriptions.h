#pragma once

#include <string>

#include "Platform/Geometry.h"

namespace zephyx {

// How values stand in log lines.

/// "true" or "false".
const char* describe(bool value);
/// "(560.0, 720.0)".
std::string describe(Size size);
/// "(0.0, 0.0, 560.0, 720.0)".
std::string describe(const Rect& rect);
/// The identifier, or "?" when there is none.
std::string describeIdentifier(const std::string& bundleIdentifier);

}  // namespace zephyx
