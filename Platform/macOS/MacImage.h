#pragma once

#import <AppKit/AppKit.h>

#include <memory>
#include <mutex>

#include "Platform/Image.h"

namespace zephyx {

/// A picture of the system. Its lazy decoding is serialized: threads may share it.
class MacImage final : public Image {
 public:
  /// The most pixels that a picture may have, decoded or drawn.
  static constexpr double maximumPixels = 100e6;

  /// `picture` is not changed any more by anybody.
  explicit MacImage(NSImage* picture);

  Size size() const override;
  PixelSize pixelSize() const override;
  std::shared_ptr<Image> drawnAtSize(Size size) const override;
  Bytes pngRepresentation() const override;

  NSImage* picture() const { return picture_; }

 private:
  NSImage* picture_;
  mutable std::mutex mutex_;
};

/// The system's picture of any image; nil on failure.
NSImage* nsImage(const Image& image);

}  // namespace zephyx
