#include "Tests/Simulated/SimulatedImages.h"

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <system_error>

namespace zephyx {
namespace {

constexpr int largestSide = 100'000;

struct Picture {
  std::string format;
  PixelSize pixels;
  int dotsPerInch = 72;
};

class SimulatedImage final : public Image {
 public:
  SimulatedImage(Picture picture, double backingScale)
      : picture_(std::move(picture)), backingScale_(backingScale) {}

  Size size() const override {
    const double pointsPerPixel = 72.0 / picture_.dotsPerInch;
    return {picture_.pixels.wide * pointsPerPixel, picture_.pixels.high * pointsPerPixel};
  }

  PixelSize pixelSize() const override { return picture_.pixels; }

  std::shared_ptr<Image> drawnAtSize(Size size) const override {
    if (!(size.width > 0) || !(size.height > 0)) return nullptr;
    auto drawn = picture_;
    drawn.pixels = {static_cast<int>(std::ceil(size.width * backingScale_)),
                    static_cast<int>(std::ceil(size.height * backingScale_))};
    drawn.dotsPerInch = static_cast<int>(72 * backingScale_);
    return std::make_shared<SimulatedImage>(std::move(drawn), backingScale_);
  }

  Bytes pngRepresentation() const override {
    if (picture_.format == "SIMRAW") return {};
    return SimulatedImages::encoded(picture_.pixels, picture_.dotsPerInch);
  }

 private:
  Picture picture_;
  double backingScale_;
};

}  // namespace

Bytes SimulatedImages::encoded(PixelSize size, int dotsPerInch, const std::string& format) {
  std::ostringstream text;
  text << format << ' ' << size.wide << ' ' << size.high << ' ' << dotsPerInch << '\n';
  const auto line = text.str();
  return {line.begin(), line.end()};
}

std::shared_ptr<Image> SimulatedImages::decode(BytesView data) const {
  std::istringstream text(std::string(data.begin(), data.end()));
  Picture picture;
  text >> picture.format >> picture.pixels.wide >> picture.pixels.high >> picture.dotsPerInch;
  if (!text || picture.format.rfind("SIM", 0) != 0) return nullptr;
  const auto isSide = [](int length) { return length >= 0 && length <= largestSide; };
  if (!isSide(picture.pixels.wide) || !isSide(picture.pixels.high) || picture.dotsPerInch <= 0) {
    return nullptr;
  }
  return std::make_shared<SimulatedImage>(std::move(picture), backingScale_);
}

std::shared_ptr<Image> SimulatedImages::decodeFile(const std::string& path) const {
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return nullptr;
  std::ifstream file(path, std::ios::binary);
  return decode(Bytes(std::istreambuf_iterator<char>(file), {}));
}

}  // namespace zephyx
