#pragma once

#include <memory>

#include "Platform/Image.h"

namespace zephyx {

/// What holds of every picture that could be decoded: it can be drawn as small as a thumbnail, and
/// its PNG file, written anew, has its pixels. Null, or the name of the broken property.
const char* brokenImageProperty(const std::shared_ptr<Image>& image);

}  // namespace zephyx
