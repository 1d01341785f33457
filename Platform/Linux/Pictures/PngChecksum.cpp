#include "Platform/Linux/Pictures/PngChecksum.h"

#if ZEPHYX_ISAL
#include <isa-l/crc.h>
#else
#include <zlib.h>
#endif

namespace zephyx {

std::uint32_t pngChecksum(BytesView bytes) {
#if ZEPHYX_ISAL
  return crc32_gzip_refl(0, bytes.data(), bytes.size());
#else
  return static_cast<std::uint32_t>(crc32_z(0, bytes.data(), bytes.size()));
#endif
}

}  // namespace zephyx
