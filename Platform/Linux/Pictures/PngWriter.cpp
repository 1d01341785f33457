#include "Platform/Linux/Pictures/PngWriter.h"

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <new>

#include "Platform/Linux/Pictures/PngErrors.h"
#include "Platform/Linux/Pictures/ZlibEncoder.h"

namespace zephyx {

namespace {

constexpr std::size_t bandBytes = 256 * 1024;  // filtered and packed at a time
constexpr std::uint8_t filterUp = 2;

void subtract(const std::uint8_t* __restrict row, const std::uint8_t* __restrict above,
              std::uint8_t* __restrict to, std::size_t bytes) {
  constexpr std::size_t lane = 32;  // a fixed length becomes vector instructions
  std::size_t at = 0;
  for (; at + lane <= bytes; at += lane) {
    for (std::size_t i = 0; i < lane; ++i) {
      to[at + i] = static_cast<std::uint8_t>(row[at + i] - above[at + i]);
    }
  }
  for (; at < bytes; ++at) to[at] = static_cast<std::uint8_t>(row[at] - above[at]);
}

}  // namespace

PngWriter::PngWriter(const QImage& image) : image_(image) {
  png_ = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, jumpOnPngError, ignorePngWarning);
  if (png_) info_ = png_create_info_struct(png_);
}

PngWriter::~PngWriter() {
  png_destroy_write_struct(&png_, &info_);
}

Bytes PngWriter::write() {
  if (!png_ || !info_ || !writeHeader() || !writePixels() || !writeChunk("IEND", {})) return {};
  return std::move(file_);
}

// The library reports errors by a jump: the two functions that call `setjmp` hold no objects that
// would have to be destroyed on the way.

bool PngWriter::writeHeader() {
  if (setjmp(png_jmpbuf(png_))) return false;  // NOLINT(cert-err52-cpp): the library's interface
  png_set_write_fn(png_, this, append, nullptr);
  png_set_IHDR(png_, info_, static_cast<png_uint_32>(image_.width()),
               static_cast<png_uint_32>(image_.height()), 8,
               image_.hasAlphaChannel() ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB,
               PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_BASE, PNG_FILTER_TYPE_BASE);
  png_write_info(png_, info_);
  return true;
}

bool PngWriter::writeChunk(const char* name, BytesView payload) {
  if (setjmp(png_jmpbuf(png_))) return false;  // NOLINT(cert-err52-cpp): the library's interface
  png_write_chunk(png_, reinterpret_cast<png_const_bytep>(name), payload.data(), payload.size());
  return true;
}

bool PngWriter::writePixels() {
  const auto rowBytes = static_cast<std::size_t>(image_.width()) * image_.depth() / 8;
  const int bandRows = static_cast<int>(std::max<std::size_t>(1, bandBytes / (rowBytes + 1)));
  const Bytes black(rowBytes);
  Bytes filtered;
  Bytes packed;
  ZlibEncoder encoder;
  for (int top = 0; top < image_.height(); top += bandRows) {
    const int bottom = std::min(image_.height(), top + bandRows);
    filtered.resize(static_cast<std::size_t>(bottom - top) * (rowBytes + 1));
    auto* to = filtered.data();
    for (int y = top; y < bottom; ++y) {
      *to++ = filterUp;
      subtract(image_.constScanLine(y), y > 0 ? image_.constScanLine(y - 1) : black.data(), to,
               rowBytes);
      to += rowBytes;
    }
    packed.clear();
    if (!encoder.encode(filtered, bottom == image_.height(), packed)) return false;
    if (!packed.empty() && !writeChunk("IDAT", packed)) return false;
  }
  return true;
}

void PngWriter::append(png_structp png, png_bytep bytes, png_size_t count) {
  auto& file = static_cast<PngWriter*>(png_get_io_ptr(png))->file_;
  bool appended = true;
  try {
    file.insert(file.end(), bytes, bytes + count);
  } catch (const std::bad_alloc&) {
    appended = false;  // must not unwind through the library
  }
  if (!appended) png_error(png, "no memory");
}

}  // namespace zephyx
