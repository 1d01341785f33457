#pragma once

#include <memory>
#include <string>

#include "Platform/BinaryMessenger.h"
#include "Platform/Geometry.h"

namespace zephyx {

struct PixelSize {
  int wide = 0;
  int high = 0;
  bool operator==(const PixelSize&) const = default;
};

/// A decoded picture; immutable. Any thread.
class Image {
 public:
  virtual ~Image() = default;

  virtual Size size() const = 0;            ///< in points
  virtual PixelSize pixelSize() const = 0;  ///< of the first representation
  /// The whole picture drawn into a new one of `size` points; null on failure.
  virtual std::shared_ptr<Image> drawnAtSize(Size size) const = 0;
  /// Encoded as PNG; empty on failure.
  virtual Bytes pngRepresentation() const = 0;
};

/// Any thread. Hostile data costs bounded memory and gives null.
class Images {
 public:
  virtual ~Images() = default;
  /// Null when the data are not a picture that the system can read.
  virtual std::shared_ptr<Image> decode(BytesView data) const = 0;
  virtual std::shared_ptr<Image> decodeFile(const std::string& path) const = 0;
};

}  // namespace zephyx
