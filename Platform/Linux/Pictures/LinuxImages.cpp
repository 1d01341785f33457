#include "Platform/Linux/Pictures/LinuxImages.h"

#include <QtCore/QBuffer>
#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtGui/QImageReader>
#include <algorithm>
#include <array>
#include <cmath>
#include <exception>
#include <utility>

#include "Platform/Linux/Pictures/LinuxImage.h"
#include "Platform/Linux/Pictures/PngChunks.h"
#include "Platform/Linux/Pictures/PngReader.h"

namespace zephyx {

namespace {

constexpr std::int64_t maximumFileBytes = std::int64_t{512} << 20;
constexpr std::int64_t signatureBytes = 8;

constexpr std::array otherFormats = {"jpeg", "jpg", "bmp", "gif", "webp", "tiff", "tif", "ico"};

double points(int pixels, double dotsPerMetre) {
  if (dotsPerMetre <= 0) return pixels;
  // Files count in whole dots per metre, so that 144 dots per inch come back as 143.99.
  auto dotsPerInch = dotsPerMetre * 0.0254;
  const auto whole = std::round(dotsPerInch);
  if (std::abs(dotsPerInch - whole) < 0.0255 && whole > 0) dotsPerInch = whole;
  return pixels * 72 / dotsPerInch;
}

QImage inOurFormat(QImage picture) {
  picture.convertTo(picture.hasAlphaChannel() ? QImage::Format_RGBA8888 : QImage::Format_RGB888);
  return picture;
}

}  // namespace

LinuxImages::LinuxImages() {
  // The toolkit's own bound, in megabytes, is lower than ours.
  QImageReader::setAllocationLimit(static_cast<int>(maximumPixels * 4 >> 20));
}

std::shared_ptr<Image> LinuxImages::decode(BytesView data) const {
  try {
    if (PngChunks::hasSignature(data)) return decodePng(Bytes(data.begin(), data.end()));
    auto bytes = QByteArray::fromRawData(reinterpret_cast<const char*>(data.data()),
                                         static_cast<qsizetype>(data.size()));
    QBuffer buffer(&bytes);
    return buffer.open(QIODevice::ReadOnly) ? decodeOther(buffer) : nullptr;
  } catch (const std::exception&) {
    return nullptr;  // short of memory or threads
  }
}

std::shared_ptr<Image> LinuxImages::decodeFile(const std::string& path) const {
  try {
    QFile file(QString::fromStdString(path));
    // Opening a pipe would wait for its writer.
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly)) return nullptr;
    const auto begin = file.peek(signatureBytes);
    if (!PngChunks::hasSignature({reinterpret_cast<const std::uint8_t*>(begin.data()),
                                  static_cast<std::size_t>(begin.size())})) {
      return decodeOther(file);
    }
    const auto size = file.size();
    if (size > maximumFileBytes) return nullptr;
    Bytes bytes(static_cast<std::size_t>(size));
    if (file.read(reinterpret_cast<char*>(bytes.data()), size) != size) return nullptr;
    return decodePng(std::move(bytes));
  } catch (const std::exception&) {
    return nullptr;  // short of memory or threads
  }
}

std::shared_ptr<Image> LinuxImages::fromQImage(QImage picture) {
  if (picture.isNull()) return nullptr;
  const auto size = picture.deviceIndependentSize();
  return std::make_shared<LinuxImage>(inOurFormat(std::move(picture)),
                                      Size{size.width(), size.height()}, Bytes());
}

std::shared_ptr<Image> LinuxImages::decodePng(Bytes file) {
  const auto chunks = PngChunks::find(file);
  if (!chunks) return nullptr;
  PngReader reader(*chunks);
  auto pixels = reader.read(maximumPixels);
  if (pixels.isNull()) return nullptr;
  const Size size{points(pixels.width(), reader.dotsPerMeterX()),
                  points(pixels.height(), reader.dotsPerMeterY())};
  file.resize(chunks->size);
  return std::make_shared<LinuxImage>(std::move(pixels), size, std::move(file));
}

std::shared_ptr<Image> LinuxImages::decodeOther(QIODevice& device) {
  QImageReader reader(&device);
  reader.setDecideFormatFromContent(true);
  reader.setAutoTransform(true);
  const auto format = reader.format();
  if (std::find(otherFormats.begin(), otherFormats.end(), format) == otherFormats.end()) {
    return nullptr;
  }
  const auto expected = reader.size();
  if (expected.isValid() &&
      static_cast<std::uint64_t>(expected.width()) * static_cast<std::uint64_t>(expected.height()) >
          maximumPixels) {
    return nullptr;
  }
  auto picture = reader.read();
  if (picture.isNull()) return nullptr;
  // A picture without a resolution of its own is given the screen's.
  const QImage plain(1, 1, QImage::Format_RGB888);
  const bool named = picture.dotsPerMeterX() != plain.dotsPerMeterX() ||
                     picture.dotsPerMeterY() != plain.dotsPerMeterY();
  const Size size{points(picture.width(), named ? picture.dotsPerMeterX() : 0),
                  points(picture.height(), named ? picture.dotsPerMeterY() : 0)};
  return std::make_shared<LinuxImage>(inOurFormat(std::move(picture)), size, Bytes());
}

}  // namespace zephyx
