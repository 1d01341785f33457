#pragma once

#include <QtGui/QImage>

#include "Platform/Image.h"

namespace zephyx {

/// Pixels in memory, as RGB888 or RGBA8888 with straight alpha.
class LinuxImage : public Image {
 public:
  /// `png` is the file that `pixels` were decoded from, when it was one; else empty.
  LinuxImage(QImage pixels, Size size, Bytes png);

  Size size() const override { return size_; }
  PixelSize pixelSize() const override { return {pixels_.width(), pixels_.height()}; }
  std::shared_ptr<Image> drawnAtSize(Size size) const override;
  Bytes pngRepresentation() const override;

  const QImage& pixels() const { return pixels_; }

 private:
  const QImage pixels_;
  const Size size_;
  const Bytes png_;
};

}  // namespace zephyx
