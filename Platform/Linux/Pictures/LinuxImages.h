#pragma once

#include <QtGui/QImage>

#include "Platform/Image.h"

class QIODevice;

namespace zephyx {

/// Decodes PNG by itself, and the other usual kinds with the toolkit's readers. Of a picture that
/// moves, the first frame. A point is a pixel unless the file names a resolution.
class LinuxImages : public Images {
 public:
  static constexpr std::uint64_t maximumPixels = 100'000'000;

  LinuxImages();

  std::shared_ptr<Image> decode(BytesView data) const override;
  std::shared_ptr<Image> decodeFile(const std::string& path) const override;

  /// Null for a null picture.
  static std::shared_ptr<Image> fromQImage(QImage picture);

 private:
  static std::shared_ptr<Image> decodePng(Bytes file);
  static std::shared_ptr<Image> decodeOther(QIODevice& device);
};

}  // namespace zephyx
