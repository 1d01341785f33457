#pragma once

#include <optional>

#include "Platform/Window.h"

namespace zephyx {

/// The screen that the user looks at: the one under the pointer, else the main one, else the first.
/// Nothing when there is no screen at all.
std::optional<Screen> pointerScreen(const Screens& screens);

}  // namespace zephyx
