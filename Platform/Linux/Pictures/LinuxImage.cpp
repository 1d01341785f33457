#include "Platform/Linux/Pictures/LinuxImage.h"

#include <algorithm>
#include <cmath>
#include <exception>
#include <utility>

#include "Platform/Linux/Pictures/BoxScaler.h"
#include "Platform/Linux/Pictures/LinuxImages.h"
#include "Platform/Linux/Pictures/PngWriter.h"

namespace zephyx {

LinuxImage::LinuxImage(QImage pixels, Size size, Bytes png)
    : pixels_(std::move(pixels)), size_(size), png_(std::move(png)) {}

std::shared_ptr<Image> LinuxImage::drawnAtSize(Size size) const {
  const auto maximum = static_cast<double>(LinuxImages::maximumPixels);
  // Written so that a value that is not a number is refused as well.
  if (!(size.width > 0 && size.height > 0)) return nullptr;
  if (!(size.width <= maximum && size.height <= maximum)) return nullptr;
  const auto wide = std::max(1.0, std::round(size.width));
  const auto high = std::max(1.0, std::round(size.height));
  if (wide * high > maximum) return nullptr;
  try {
    auto drawn = BoxScaler::scaled(pixels_, static_cast<int>(wide), static_cast<int>(high));
    if (drawn.isNull()) return nullptr;
    return std::make_shared<LinuxImage>(std::move(drawn), Size{wide, high}, Bytes());
  } catch (const std::exception&) {
    return nullptr;  // short of memory or threads
  }
}

Bytes LinuxImage::pngRepresentation() const {
  try {
    return png_.empty() ? PngWriter(pixels_).write() : png_;
  } catch (const std::exception&) {
    return {};  // short of memory
  }
}

}  // namespace zephyx
