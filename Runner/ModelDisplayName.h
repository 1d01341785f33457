#pragma once

#include <string>
#include <string_view>

namespace zephyx {

/// What a model is called, by its identifier: "Opus 4.1" for "claude-opus-4-1-20250805".
std::string modelDisplayName(std::string_view identifier);

}  // namespace zephyx
