#include "Platform/Linux/Pictures/PngChunks.h"

#include <algorithm>
#include <string_view>

#include "Platform/Linux/Pictures/PngBytes.h"

namespace zephyx {

namespace {
constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
}

bool PngChunks::hasSignature(BytesView file) {
  return file.size() >= signature.size() &&
         std::equal(signature.begin(), signature.end(), file.begin(),
                    [](char a, std::uint8_t b) { return static_cast<std::uint8_t>(a) == b; });
}

std::optional<PngChunks> PngChunks::find(BytesView file) {
  if (!hasSignature(file)) return std::nullopt;
  PngChunks found;
  for (auto at = signature.size(); file.size() - at >= overhead;) {
    const std::size_t length = readBigEndian(&file[at]);
    if (length > file.size() - at - overhead) return std::nullopt;
    const auto chunk = file.subspan(at, overhead + length);
    const auto name = readBigEndian(&chunk[4]);
    if (found.header.empty() != (name == pngName("IHDR"))) return std::nullopt;
    at += chunk.size();
    if (name == pngName("IEND")) {
      found.size = at;
      if (found.data.empty()) return std::nullopt;
      return found;
    }
    if (name == pngName("IDAT")) {
      if (length > 0) found.data.push_back(chunk);
    } else if (found.data.empty() && (name == pngName("IHDR") || name == pngName("PLTE") ||
                                      name == pngName("tRNS") || name == pngName("pHYs"))) {
      found.header.push_back(chunk);
    }
  }
  return std::nullopt;
}

}  // namespace zephyx
