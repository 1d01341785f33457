#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <random>

#include "Platform/Linux/Pictures/LinuxImage.h"
#include "Platform/Linux/Pictures/LinuxImages.h"

namespace zephyx {
namespace {

QImage randomPicture(int wide, int high, QImage::Format format) {
  QImage picture(wide, high, QImage::Format_RGBA8888);
  std::mt19937 random(7);
  for (int y = 0; y < high; ++y) {
    for (int x = 0; x < wide * 4; ++x) {
      picture.scanLine(y)[x] = static_cast<std::uint8_t>(random());
    }
  }
  return picture.convertToFormat(format);
}

QImage scaled(const QImage& picture, Size size) {
  const auto image = LinuxImages::fromQImage(picture)->drawnAtSize(size);
  return image ? static_cast<const LinuxImage&>(*image).pixels() : QImage();
}

/// What a pixel of the scaled picture should be, summed up pixel by pixel.
struct Average {
  double red = 0, green = 0, blue = 0, alpha = 0;

  Average(const QImage& picture, QSize target, int column, int row) {
    const double stepX = picture.width() / static_cast<double>(target.width());
    const double stepY = picture.height() / static_cast<double>(target.height());
    const auto overlap = [](double begin, double step, int pixel) {
      return std::max(0.0, std::min(begin + step, pixel + 1.0) - std::max(begin, pixel + 0.0)) /
             step;
    };
    for (int y = static_cast<int>(row * stepY);
         y < std::min<double>(picture.height(), (row + 1) * stepY); ++y) {
      for (int x = static_cast<int>(column * stepX);
           x < std::min<double>(picture.width(), (column + 1) * stepX); ++x) {
        const auto pixel = picture.pixel(x, y);
        const auto weight = overlap(column * stepX, stepX, x) * overlap(row * stepY, stepY, y);
        alpha += weight * qAlpha(pixel);
        red += weight * qRed(pixel) * qAlpha(pixel);
        green += weight * qGreen(pixel) * qAlpha(pixel);
        blue += weight * qBlue(pixel) * qAlpha(pixel);
      }
    }
    if (alpha > 0) red /= alpha, green /= alpha, blue /= alpha;
  }
};

TEST(ImageScaling, EachPixelIsTheAverageOfTheAreaThatItCovers) {
  const std::pair<QSize, QSize> cases[] = {{{101, 67}, {37, 20}}, {{1300, 900}, {240, 166}},
                                           {{40, 30}, {40, 30}},  {{7, 5}, {1, 1}},
                                           {{2, 700}, {1, 2}},    {{3, 2}, {7, 5}}};
  for (const auto format : {QImage::Format_RGB888, QImage::Format_RGBA8888}) {
    for (const auto& [from, to] : cases) {
      const auto picture = randomPicture(from.width(), from.height(), format);
      const auto result = scaled(picture, {to.width() + 0.4, to.height() - 0.4});
      ASSERT_EQ(result.size(), to);
      for (int y = 0; y < to.height(); ++y) {
        for (int x = 0; x < to.width(); ++x) {
          const Average expected(picture, to, x, y);
          const auto pixel = result.pixel(x, y);
          ASSERT_NEAR(qAlpha(pixel), expected.alpha, 0.6) << x << "," << y;
          // Colours of nearly transparent pixels have few steps.
          if (expected.alpha < 40) continue;
          const double tolerance =
              0.6 + (format == QImage::Format_RGBA8888 ? 128 / expected.alpha : 0);
          ASSERT_NEAR(qRed(pixel), expected.red, tolerance) << x << "," << y;
          ASSERT_NEAR(qGreen(pixel), expected.green, tolerance) << x << "," << y;
          ASSERT_NEAR(qBlue(pixel), expected.blue, tolerance) << x << "," << y;
        }
      }
    }
  }
}

TEST(ImageScaling, TransparentPixelsLendNoColor) {
  QImage picture(2, 2, QImage::Format_RGBA8888);
  picture.fill(QColor(0, 255, 0, 0));
  picture.setPixelColor(0, 0, QColor(200, 0, 0, 255));
  picture.setPixelColor(0, 1, QColor(200, 0, 0, 255));
  EXPECT_EQ(scaled(picture, {1, 1}).pixelColor(0, 0), QColor(200, 0, 0, 128));
}

TEST(ImageScaling, SizesThatCannotBeDrawnAreRefused) {
  const auto image = LinuxImages::fromQImage(randomPicture(30, 30, QImage::Format_RGB888));
  const auto nothing = std::numeric_limits<double>::quiet_NaN();
  for (const Size size : {Size{0, 5}, Size{5, 0}, Size{-3, 5}, Size{nothing, 5}, Size{5, nothing},
                          Size{1e30, 5}, Size{100'000, 100'000}}) {
    EXPECT_FALSE(image->drawnAtSize(size)) << size.width << "x" << size.height;
  }
  const auto sliver = image->drawnAtSize({20, 0.1});
  ASSERT_TRUE(sliver);
  EXPECT_EQ(sliver->pixelSize(), (PixelSize{20, 1}));
}

TEST(ImageScaling, APictureForADenseScreenCountsItsPoints) {
  QImage picture(64, 32, QImage::Format_ARGB32_Premultiplied);
  picture.fill(Qt::blue);
  picture.setDevicePixelRatio(2);
  const auto image = LinuxImages::fromQImage(picture);
  EXPECT_EQ(image->size(), (Size{32, 16}));
  EXPECT_EQ(image->pixelSize(), (PixelSize{64, 32}));
  EXPECT_FALSE(LinuxImages::fromQImage(QImage()));
}

}  // namespace
}  // namespace zephyx
