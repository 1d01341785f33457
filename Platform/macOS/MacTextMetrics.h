#pragma once

#include "Platform/TextMetrics.h"

namespace zephyx {

class MacTextMetrics final : public TextMetrics {
 public:
  Size size(const std::string& text, const Font& font) const override;
};

}  // namespace zephyx
