#pragma once

#include <string_view>

namespace zephyx {

/// True for well-formed UTF-8: no overlong forms, no surrogates, nothing above U+10FFFF, no
/// truncated sequence at the end.
bool isValidUtf8(std::string_view text);

}  // namespace zephyx
