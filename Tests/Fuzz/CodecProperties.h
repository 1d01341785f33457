#pragma once

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Decodes the bytes as a value, a call and a reply. What decodes must encode again to bytes that
/// decode to the same. Null, or the name of the broken property.
const char* brokenCodecProperty(BytesView bytes);

}  // namespace zephyx
