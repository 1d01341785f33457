#pragma once

#include <memory>
#include <string>

#include "Platform/Image.h"

namespace zephyx {

/// Everything that the system draws: bitmaps of all kinds, also PDF and SVG.
class MacImages final : public Images {
 public:
  std::shared_ptr<Image> decode(BytesView data) const override;
  std::shared_ptr<Image> decodeFile(const std::string& path) const override;
};

}  // namespace zephyx
