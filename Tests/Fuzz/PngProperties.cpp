#include <algorithm>

#include "Platform/Linux/Pictures/LinuxImages.h"
#include "Platform/Linux/Pictures/PngBytes.h"
#include "Platform/Linux/Pictures/PngChecksum.h"
#include "Platform/Linux/Pictures/PngChunks.h"
#include "Tests/Fuzz/FuzzTargets.h"
#include "Tests/Fuzz/ImageProperties.h"
#include "Tests/Linux/PngFile.h"

namespace zephyx {
namespace {

/// The file with the right checksum behind each chunk: no wrong one shall hide the rest.
Bytes withChecksums(BytesView file) {
  Bytes changed(file.begin(), file.end());
  for (std::size_t at = 8; changed.size() - at >= PngChunks::overhead;) {
    const std::size_t length = readBigEndian(&changed[at]);
    if (length > changed.size() - at - PngChunks::overhead) break;
    const BytesView checked(&changed[at + 4], 4 + length);
    writeBigEndian(pngChecksum(checked), &changed[at + 8 + length]);
    at += PngChunks::overhead + length;
  }
  return changed;
}

/// Width, height, depth and kind, then the rows; or where the kind says so, the packed rows.
Bytes described(BytesView bytes) {
  constexpr std::size_t described = 4;
  if (bytes.size() < described) return {};
  constexpr std::uint8_t depths[] = {1, 2, 4, 8, 16, 3};
  PngFile png{.wide = bytes[0],
              .high = bytes[1],
              .depth = depths[bytes[2] % 6],
              .colorType = static_cast<std::uint8_t>(bytes[3] & 7),
              .interlaced = (bytes[3] & 8) != 0};
  const Bytes rows(bytes.begin() + described, bytes.end());
  png.header();
  if (bytes[3] & 16)
    png.chunk("PLTE", Bytes(rows.begin(), rows.begin() + rows.size() / 3 % 64 * 3));
  if (bytes[3] & 32) png.chunk("tRNS", Bytes(rows.begin(), rows.begin() + rows.size() % 7));
  return png.data(bytes[3] & 64 ? rows : zlibPacked(rows)).end();
}

}  // namespace

const char* brokenPngProperty(BytesView bytes) {
  if (!PngChunks::hasSignature(bytes)) {
    return brokenImageProperty(LinuxImages().decode(described(bytes)));
  }
  if (const char* broken = brokenImageProperty(LinuxImages().decode(bytes))) return broken;
  return brokenImageProperty(LinuxImages().decode(withChecksums(bytes)));
}

}  // namespace zephyx
