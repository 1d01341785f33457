#pragma once

#include <png.h>

#include <QtGui/QImage>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Encodes one picture as PNG, fast rather than small. Used once, by one thread.
class PngWriter {
 public:
  /// `image` is RGB888 or RGBA8888 and outlives this object.
  explicit PngWriter(const QImage& image);
  ~PngWriter();
  PngWriter(const PngWriter&) = delete;
  PngWriter& operator=(const PngWriter&) = delete;

  /// Empty on failure.
  Bytes write();

 private:
  static void append(png_structp png, png_bytep bytes, png_size_t count);
  bool writeHeader();
  bool writeChunk(const char* name, BytesView payload);
  bool writePixels();

  const QImage& image_;
  Bytes file_;
  png_structp png_ = nullptr;
  png_infop info_ = nullptr;
};

}  // namespace zephyx
