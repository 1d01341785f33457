#include "Tests/Fuzz/ImageProperties.h"

#include <algorithm>
#include <cmath>

#include "Platform/Linux/Pictures/LinuxImage.h"
#include "Platform/Linux/Pictures/LinuxImages.h"

namespace zephyx {
namespace {

constexpr double thumbnailSide = 240;
/// Larger ones are as slow as they are large.
constexpr qint64 modestPixels = 250'000;

const QImage& pixelsOf(const std::shared_ptr<Image>& image) {
  return static_cast<const LinuxImage&>(*image).pixels();
}

bool survivesItsFile(const QImage& pixels) {
  const LinuxImage plain(pixels, {1, 1}, {});
  const auto again = LinuxImages().decode(plain.pngRepresentation());
  return again && pixelsOf(again) == pixels;
}

}  // namespace

const char* brokenImageProperty(const std::shared_ptr<Image>& image) {
  if (!image) return nullptr;
  const auto& pixels = pixelsOf(image);
  const auto count = qint64{pixels.width()} * pixels.height();
  if (count <= 0 || static_cast<std::uint64_t>(count) > LinuxImages::maximumPixels) {
    return "a picture has its bounds";
  }
  const auto size = image->size();
  if (!(size.width > 0 && size.height > 0) || !std::isfinite(size.width + size.height)) {
    return "a picture has a size";
  }
  const auto scale = std::min(1.0, thumbnailSide / std::max(size.width, size.height));
  const auto thumbnail = image->drawnAtSize({size.width * scale, size.height * scale});
  if (!thumbnail || thumbnail->pixelSize().wide > thumbnailSide ||
      thumbnail->pixelSize().high > thumbnailSide) {
    return "a picture has a thumbnail";
  }
  if (!survivesItsFile(pixelsOf(thumbnail))) return "a thumbnail survives its file";
  if (count <= modestPixels && !survivesItsFile(pixels)) return "a picture survives its file";
  return nullptr;
}

}  // namespace zephyx
