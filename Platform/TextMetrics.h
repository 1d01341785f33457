#pragma once

#include <string>

#include "Platform/Geometry.h"
#include "Platform/TextStyle.h"

namespace zephyx {

/// How much room text takes, for laying views out before they are shown. Main thread.
class TextMetrics {
 public:
  virtual ~TextMetrics() = default;
  /// The size, in whole points, in which one line of UTF-8 text is shown without truncation. An
  /// empty text has the height of a line.
  virtual Size size(const std::string& text, const Font& font) const = 0;
};

}  // namespace zephyx
