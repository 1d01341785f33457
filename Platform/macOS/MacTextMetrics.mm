#include "Platform/macOS/MacTextMetrics.h"

#import <AppKit/AppKit.h>

#include <cmath>

#include "Platform/macOS/MacViewLook.h"
#include "Platform/macOS/Strings.h"

namespace zephyx {

Size MacTextMetrics::size(const std::string& text, const Font& font) const {
  NSDictionary<NSAttributedStringKey, id>* attributes =
      @{NSFontAttributeName : viewLook::font(font)};
  const NSSize line = [@" " sizeWithAttributes:attributes];
  const NSSize size = [nsString(text) sizeWithAttributes:attributes];
  return {text.empty() ? 0 : std::ceil(size.width), std::ceil(std::fmax(size.height, line.height))};
}

}  // namespace zephyx
