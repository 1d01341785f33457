#include <benchmark/benchmark.h>

#include <QtCore/QBuffer>
#include <algorithm>
#include <chrono>
#include <random>

#include "Platform/Linux/Pictures/LinuxImages.h"

namespace zephyx {
namespace {

constexpr double thumbnailSide = 240;

/// Smooth colours under the noise of a camera: packs to about 20 MB at 4000x3000.
QImage photo(int wide, int high) {
  QImage picture(wide, high, QImage::Format_RGB888);
  std::mt19937 random(1);
  for (int y = 0; y < high; ++y) {
    auto* row = picture.scanLine(y);
    for (int x = 0; x < wide; ++x) {
      for (int c = 0; c < 3; ++c) {
        // The sum of two dice of 8 faces.
        const auto bits = random();
        const auto noise = static_cast<int>((bits >> 8 & 7) + (bits >> 16 & 7));
        row[3 * x + c] =
            static_cast<std::uint8_t>(40 + x * 90 / wide + y * 90 / high + c * 8 + noise);
      }
    }
  }
  return picture;
}

QByteArray encoded(const QImage& picture, const char* format) {
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  picture.save(&buffer, format, 60);
  return bytes;
}

Bytes thumbnail(const Image& image) {
  const auto size = image.size();
  const auto scale = thumbnailSide / std::max(size.width, size.height);
  return image.drawnAtSize({size.width * scale, size.height * scale})->pngRepresentation();
}

/// The same work as below with the toolkit's own means.
void toolkit(const QByteArray& file, bool fullSize) {
  const auto picture = QImage::fromData(file);
  if (fullSize) benchmark::DoNotOptimize(encoded(picture, "PNG"));
  const auto small = picture.scaled(240, 240, Qt::KeepAspectRatio, Qt::SmoothTransformation);
  benchmark::DoNotOptimize(encoded(small, "PNG"));
}

double seconds() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// From the bytes of a file to its full-size PNG (when asked for) and its thumbnail.
void images(benchmark::State& state, int high, const char* format, bool fullSize) {
  const auto file = encoded(photo(4000, high), format);
  auto start = seconds();
  toolkit(file, fullSize);
  const auto toolkitTime = seconds() - start;

  const LinuxImages images;
  start = seconds();
  for (auto _ : state) {
    const auto image = images.decode({reinterpret_cast<const std::uint8_t*>(file.data()),
                                      static_cast<std::size_t>(file.size())});
    if (!image) return state.SkipWithError("does not decode");
    if (fullSize) benchmark::DoNotOptimize(image->pngRepresentation());
    benchmark::DoNotOptimize(thumbnail(*image));
  }
  const auto time = (seconds() - start) / static_cast<double>(state.iterations());
  state.counters["fileMB"] = static_cast<double>(file.size()) / 1e6;
  state.counters["toolkitTakesTimes"] = toolkitTime / time;
}
BENCHMARK_CAPTURE(images, thumbnail4000x3000, 3000, "PNG", false)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(images, blobAndThumbnail4000x1000, 1000, "PNG", true)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();
BENCHMARK_CAPTURE(images, blobAndThumbnailOfTiff4000x1000, 1000, "TIFF", true)
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

}  // namespace
}  // namespace zephyx
