#pragma once

#include <png.h>

#include <QtGui/QImage>
#include <memory>
#include <optional>

#include "Platform/Linux/Pictures/PngChunks.h"
#include "Platform/Linux/Pictures/PngPixelStream.h"

namespace zephyx {

/// Decodes one PNG file of any kind. Used once, by one thread.
class PngReader {
 public:
  /// `chunks` outlives this object.
  explicit PngReader(const PngChunks& chunks);
  ~PngReader();
  PngReader(const PngReader&) = delete;
  PngReader& operator=(const PngReader&) = delete;

  /// RGB888, or RGBA8888 for a picture with transparency. Null when the file is damaged or larger
  /// than `maximumPixels`.
  QImage read(std::uint64_t maximumPixels);
  /// Dots per metre that the file names; 0 when it names none.
  double dotsPerMeterX() const { return dotsPerMeterX_; }
  double dotsPerMeterY() const { return dotsPerMeterY_; }

 private:
  static void readBytes(png_structp png, png_bytep to, png_size_t count);
  bool readHeader(std::uint64_t maximumPixels);
  bool readPixels(QImage& image);
  void readResolution();
  bool deliver(std::span<std::uint8_t> to);
  std::uint64_t unpackedSize() const;

  const PngChunks& chunks_;
  std::vector<BytesView> pending_;  ///< header bytes to be read, the next ones last
  std::optional<PngPixelStream> pixels_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
  int passes_ = 1;
  double dotsPerMeterX_ = 0;
  double dotsPerMeterY_ = 0;
};

}  // namespace zephyx
