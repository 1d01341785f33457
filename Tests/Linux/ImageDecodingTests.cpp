#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QtCore/QBuffer>
#include <QtCore/QTemporaryDir>
#include <fstream>
#include <future>

#include "Platform/Linux/Pictures/LinuxImage.h"
#include "Platform/Linux/Pictures/LinuxImages.h"
#include "Tests/Linux/PngFile.h"

namespace zephyx {
namespace {

QImage pixelsOf(const std::shared_ptr<Image>& image) {
  return static_cast<const LinuxImage&>(*image).pixels().convertToFormat(QImage::Format_RGBA8888);
}

/// The largest difference of any byte; -1 for different sizes.
int difference(const QImage& a, const QImage& b) {
  if (a.size() != b.size()) return -1;
  int largest = 0;
  for (int y = 0; y < a.height(); ++y) {
    for (int x = 0; x < a.width() * 4; ++x) {
      largest = std::max(largest, std::abs(a.constScanLine(y)[x] - b.constScanLine(y)[x]));
    }
  }
  return largest;
}

Bytes encoded(const QImage& picture, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  EXPECT_TRUE(picture.save(&buffer, format, 100)) << format;
  return Bytes(bytes.begin(), bytes.end());
}

QImage gradient(int wide, int high, QImage::Format format) {
  QImage picture(wide, high, QImage::Format_ARGB32);
  for (int y = 0; y < high; ++y) {
    for (int x = 0; x < wide; ++x) {
      picture.setPixel(x, y, qRgba(x * 255 / wide, y * 255 / high, 90, 255 - x * 128 / wide));
    }
  }
  return picture.convertToFormat(format);
}

std::string written(const QTemporaryDir& folder, const char* name, const Bytes& bytes) {
  const auto path = folder.filePath(name).toStdString();
  std::ofstream(path, std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes.data()),
             static_cast<std::streamsize>(bytes.size()));
  return path;
}

/// A file of that kind with random contents.
Bytes randomPng(std::uint8_t colorType, std::uint8_t depth, bool transparency, bool interlaced,
                std::uint32_t side) {
  PngFile png{side, side * 3 / 4 + 1, depth, colorType, interlaced};
  png.header();
  std::mt19937 random(side);
  const auto randomBytes = [&random](std::size_t count) {
    Bytes bytes(count);
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
    return bytes;
  };
  if (colorType == 3) png.chunk("PLTE", randomBytes(3u << depth));
  if (transparency) {
    png.chunk("tRNS", colorType == 3 ? randomBytes(1u << depth) : Bytes(colorType == 0 ? 2 : 6, 0));
  }
  return png.data(zlibPacked(png.randomRows(side))).end();
}

TEST(ImageDecoding, EveryKindOfPngIsReadAsTheToolkitReadsItAndKeepsItsBytes) {
  constexpr std::tuple<int, int, bool> kinds[] = {
      {2, 8, false},  {6, 8, false},  {0, 1, false},  {0, 4, false}, {0, 8, false},
      {0, 16, false}, {4, 8, false},  {4, 16, false}, {3, 1, false}, {3, 2, true},
      {3, 8, true},   {2, 16, false}, {6, 16, false}, {2, 8, true},  {0, 8, true}};
  for (const auto& [colorType, depth, transparency] : kinds) {
    for (const std::uint32_t side : {1u, 5u, 33u, 700u}) {
      for (const bool interlaced : {false, true}) {
        SCOPED_TRACE(testing::Message() << "kind " << colorType << ", " << depth << " bits, "
                                        << transparency << interlaced << side);
        const auto file =
            randomPng(static_cast<std::uint8_t>(colorType), static_cast<std::uint8_t>(depth),
                      transparency, interlaced, side);
        auto surplus = file;
        surplus.push_back('x');
        const auto image = LinuxImages().decode(surplus);
        ASSERT_TRUE(image);
        QImage expected;
        ASSERT_TRUE(expected.loadFromData(file.data(), static_cast<int>(file.size()), "PNG"));
        expected.convertTo(QImage::Format_RGBA8888);
        EXPECT_LE(difference(pixelsOf(image), expected), depth == 16 ? 1 : 0);
        EXPECT_EQ(image->pngRepresentation(), file);
      }
    }
  }
}

TEST(ImageDecoding, OtherKindsAreReadFromMemoryAndFromFiles) {
  const std::tuple<const char*, QImage::Format, int> kinds[] = {
      {"JPEG", QImage::Format_RGB32, 12}, {"BMP", QImage::Format_RGB32, 0},
      {"TIFF", QImage::Format_RGB32, 0},  {"TIFF", QImage::Format_ARGB32, 1},
      {"WEBP", QImage::Format_ARGB32, 0}, {"ICO", QImage::Format_ARGB32, 1}};
  const QTemporaryDir folder;
  for (const auto& [format, pixels, tolerance] : kinds) {
    const auto picture = gradient(120, 80, pixels);
    const auto file = encoded(picture, format);
    for (const auto& image :
         {LinuxImages().decode(file), LinuxImages().decodeFile(written(folder, "picture", file))}) {
      ASSERT_TRUE(image) << format;
      EXPECT_EQ(image->pixelSize(), (PixelSize{120, 80})) << format;
      const auto expected = picture.convertToFormat(QImage::Format_RGBA8888);
      EXPECT_LE(difference(pixelsOf(image), expected), tolerance) << format;
      const auto again = LinuxImages().decode(image->pngRepresentation());
      ASSERT_TRUE(again) << format;
      EXPECT_EQ(pixelsOf(again), pixelsOf(image)) << format;
    }
  }
}

TEST(ImageDecoding, TheFirstFrameOfAMovingPictureIsTaken) {
  // Two frames of one pixel: red, then blue.
  const Bytes gif = {'G',  'I', 'F',  '8', '9', 'a', 1, 0, 1, 0, 0x80, 0, 0,    255, 0,    0,   0,
                     0,    255, 0x2c, 0,   0,   0,   0, 1, 0, 1, 0,    0, 2,    2,   0x44, 1,   0,
                     0x2c, 0,   0,    0,   0,   1,   0, 1, 0, 0, 2,    2, 0x4c, 1,   0,    0x3b};
  const auto image = LinuxImages().decode(gif);
  ASSERT_TRUE(image);
  EXPECT_EQ(pixelsOf(image).pixelColor(0, 0), QColor(Qt::red));
}

TEST(ImageDecoding, AResolutionMakesPointsOfPixels) {
  const auto pngWith = [](const Bytes& density) {
    PngFile png{200, 100};
    png.header();
    if (!density.empty()) png.chunk("pHYs", density);
    return png.data(zlibPacked(png.randomRows(1))).end();
  };
  const auto perMetre = [](std::uint32_t x, std::uint32_t y, std::uint8_t unit) {
    auto payload = bigEndian32(x);
    const auto tail = bigEndian32(y);
    payload.insert(payload.end(), tail.begin(), tail.end());
    payload.push_back(unit);
    return payload;
  };
  const auto saved = [](double dotsPerInch, const char* format) {
    auto picture = gradient(200, 100, QImage::Format_RGB32);
    picture.setDotsPerMeterX(static_cast<int>(dotsPerInch / 0.0254));
    picture.setDotsPerMeterY(static_cast<int>(dotsPerInch / 0.0254));
    return encoded(picture, format);
  };
  const std::tuple<const char*, Bytes, Size> cases[] = {
      {"none", pngWith({}), {200, 100}},
      {"72", pngWith(perMetre(2835, 2835, 1)), {200, 100}},
      {"144", pngWith(perMetre(5669, 5669, 1)), {100, 50}},
      {"uneven", pngWith(perMetre(2835, 11811, 1)), {200, 24}},
      {"aspect ratio only", pngWith(perMetre(2, 1, 0)), {200, 100}},
      {"zero", pngWith(perMetre(0, 0, 1)), {200, 100}},
      {"144 JPEG", saved(144, "JPEG"), {100, 50}},
      {"300 TIFF", saved(300, "TIFF"), {48, 24}},
  };
  for (const auto& [name, file, points] : cases) {
    const auto image = LinuxImages().decode(file);
    ASSERT_TRUE(image) << name;
    EXPECT_EQ(image->pixelSize(), (PixelSize{200, 100})) << name;
    EXPECT_EQ(image->size(), points) << name;
  }
}

TEST(ImageDecoding, OnlyRegularFilesAreOpened) {
  const QTemporaryDir folder;
  const auto pipe = folder.filePath("pipe").toStdString();
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  for (const auto& path : {pipe, folder.path().toStdString(), std::string("/dev/zero"),
                           folder.filePath("missing").toStdString(), std::string()}) {
    EXPECT_FALSE(LinuxImages().decodeFile(path)) << path;
  }
}

TEST(ImageDecoding, ManyThreadsMayWorkAtOnce) {
  PngFile png{900, 700};
  const auto file = png.header().data(zlibPacked(png.randomRows(4))).end();
  const LinuxImages images;
  const auto work = [&] {
    const auto image = images.decode(file);
    return image ? image->drawnAtSize({90, 70})->pngRepresentation() : Bytes();
  };
  const auto expected = work();
  ASSERT_FALSE(expected.empty());
  std::vector<std::future<Bytes>> results;
  for (int i = 0; i < 8; ++i) results.push_back(std::async(std::launch::async, work));
  for (auto& result : results) EXPECT_EQ(result.get(), expected);
}

}  // namespace
}  // namespace zephyx
