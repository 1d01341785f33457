#include "Platform/Linux/Pictures/PngReader.h"

#include <algorithm>
#include <csetjmp>
#include <cstring>
#include <exception>

#include "Platform/Linux/Pictures/PngErrors.h"

namespace zephyx {

namespace {

constexpr std::uint8_t pngSignature[] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};

}  // namespace

PngReader::PngReader(const PngChunks& chunks) : chunks_(chunks) {
  pending_.assign(chunks.header.rbegin(), chunks.header.rend());
  pending_.emplace_back(pngSignature);
  png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, jumpOnPngError, ignorePngWarning);
  if (png_) info_ = png_create_info_struct(png_);
}

PngReader::~PngReader() {
  png_destroy_read_struct(&png_, &info_, nullptr);
}

QImage PngReader::read(std::uint64_t maximumPixels) {
  if (!png_ || !info_ || !readHeader(maximumPixels)) return {};
  const bool hasAlpha = png_get_channels(png_, info_) == 4;
  QImage image(static_cast<int>(png_get_image_width(png_, info_)),
               static_cast<int>(png_get_image_height(png_, info_)),
               hasAlpha ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
  if (image.isNull() || !readPixels(image) || !pixels_->finish()) return {};
  return image;
}

// The library reports errors by a jump: the two functions that call `setjmp` hold no objects that
// would have to be destroyed on the way.

bool PngReader::readHeader(std::uint64_t maximumPixels) {
  if (setjmp(png_jmpbuf(png_))) return false;  // NOLINT(cert-err52-cpp): the library's interface
  png_set_read_fn(png_, this, readBytes);
  // The checksums of the stream that stands in for the file's own are checked by its maker.
  png_set_option(png_, PNG_IGNORE_ADLER32, PNG_OPTION_ON);
  png_read_info(png_, info_);
  png_set_crc_action(png_, PNG_CRC_QUIET_USE, PNG_CRC_QUIET_USE);
  const std::uint64_t wide = png_get_image_width(png_, info_);
  const std::uint64_t high = png_get_image_height(png_, info_);
  if (wide * high > maximumPixels) return false;
  png_set_expand(png_);
  png_set_scale_16(png_);
  png_set_gray_to_rgb(png_);
  passes_ = png_set_interlace_handling(png_);
  readResolution();
  png_read_update_info(png_, info_);
  const auto channels = png_get_channels(png_, info_);
  return png_get_bit_depth(png_, info_) == 8 && (channels == 3 || channels == 4);
}

bool PngReader::readPixels(QImage& image) {
  if (setjmp(png_jmpbuf(png_))) return false;  // NOLINT(cert-err52-cpp): the library's interface
  for (int pass = 0; pass < passes_; ++pass) {
    for (int y = 0; y < image.height(); ++y) png_read_row(png_, image.scanLine(y), nullptr);
  }
  return true;
}

void PngReader::readResolution() {
  png_uint_32 x = 0;
  png_uint_32 y = 0;
  int unit = PNG_RESOLUTION_UNKNOWN;
  if (!png_get_pHYs(png_, info_, &x, &y, &unit) || unit != PNG_RESOLUTION_METER) return;
  dotsPerMeterX_ = x;
  dotsPerMeterY_ = y;
}

void PngReader::readBytes(png_structp png, png_bytep to, png_size_t count) {
  auto* self = static_cast<PngReader*>(png_get_io_ptr(png));
  bool delivered = false;
  try {
    delivered = self->deliver({to, count});
  } catch (const std::exception&) {
    // Short of memory or threads; must not unwind through the library.
  }
  if (!delivered) png_error(png, "no more data");
}

bool PngReader::deliver(std::span<std::uint8_t> to) {
  while (!to.empty() && !pending_.empty()) {
    auto& next = pending_.back();
    const auto count = std::min(to.size(), next.size());
    std::memcpy(to.data(), next.data(), count);
    to = to.subspan(count);
    next = next.subspan(count);
    if (next.empty()) pending_.pop_back();
  }
  if (to.empty()) return true;
  if (!pixels_) pixels_.emplace(chunks_, unpackedSize());
  return pixels_->read(to);
}

std::uint64_t PngReader::unpackedSize() const {
  // Each row begins with a byte that names its filter.
  const std::uint64_t bitsPerPixel = png_get_bit_depth(png_, info_) * png_get_channels(png_, info_);
  const auto rows = [bitsPerPixel](std::uint64_t wide, std::uint64_t high) {
    return wide == 0 ? 0 : high * (1 + (wide * bitsPerPixel + 7) / 8);
  };
  const auto wide = png_get_image_width(png_, info_);
  const auto high = png_get_image_height(png_, info_);
  if (png_get_interlace_type(png_, info_) == PNG_INTERLACE_NONE) return rows(wide, high);
  std::uint64_t size = 0;
  for (int pass = 0; pass < PNG_INTERLACE_ADAM7_PASSES; ++pass) {
    size += rows(PNG_PASS_COLS(wide, pass), PNG_PASS_ROWS(high, pass));
  }
  return size;
}

}  // namespace zephyx
