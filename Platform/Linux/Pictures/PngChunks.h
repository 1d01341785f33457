#pragma once

#include <optional>
#include <vector>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Where the parts of a PNG file are that make its picture. The views point into the file.
struct PngChunks {
  std::vector<BytesView> header;  ///< IHDR, PLTE, tRNS and pHYs: whole chunks, in the file's order
  std::vector<BytesView> data;    ///< the IDAT chunks, whole, without the empty ones
  std::size_t size = 0;           ///< of the file up to the end of IEND

  static bool hasSignature(BytesView file);
  /// Nothing unless the chunks lead from the signature over picture data to the end chunk.
  static std::optional<PngChunks> find(BytesView file);

  /// The bytes that a chunk carries.
  static BytesView payload(BytesView chunk) { return chunk.subspan(8, chunk.size() - overhead); }

  static constexpr std::size_t overhead = 12;  ///< a chunk's length, name and checksum
};

}  // namespace zephyx
