#pragma once

#include <cstdint>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// The CRC-32 of a PNG chunk's name and payload.
std::uint32_t pngChecksum(BytesView bytes);

}  // namespace zephyx
