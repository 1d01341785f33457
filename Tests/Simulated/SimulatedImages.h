#pragma once

#include "Platform/Image.h"

namespace zephyx {

/// Pictures without pixels: the encoded form is a line of text, "SIMPNG width height dpi", followed
/// by anything. "SIMRAW" pictures can be read but not encoded.
class SimulatedImages final : public Images {
 public:
  std::shared_ptr<Image> decode(BytesView data) const override;
  std::shared_ptr<Image> decodeFile(const std::string& path) const override;

  /// Pixels to a point in pictures that are drawn from now on.
  void setBackingScale(double scale) { backingScale_ = scale; }

  static Bytes encoded(PixelSize size, int dotsPerInch = 72, const std::string& format = "SIMPNG");

 private:
  double backingScale_ = 1;
};

}  // namespace zephyx
