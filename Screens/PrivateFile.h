#pragma once

#include <string>
#include <string_view>

namespace zephyx {

/// Where a text entry lies while it is previewed.
std::string previewFile(const std::string& folder);

/// Writes through a temporary file and a rename; readable by the user alone. False on failure.
bool writePrivateFile(const std::string& path, std::string_view contents);

}  // namespace zephyx
