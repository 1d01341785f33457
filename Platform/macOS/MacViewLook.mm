#include "Platform/macOS/MacViewLook.h"

#include <algorithm>

#include "Platform/macOS/Strings.h"

namespace zephyx::viewLook {
namespace {

NSColor* named(Color::Name name) {
  switch (name) {
    case Color::Name::label:
      return NSColor.labelColor;
    case Color::Name::secondaryLabel:
      return NSColor.secondaryLabelColor;
    case Color::Name::tertiaryLabel:
      return NSColor.tertiaryLabelColor;
    case Color::Name::systemGreen:
      return NSColor.systemGreenColor;
    case Color::Name::systemYellow:
      return NSColor.systemYellowColor;
    case Color::Name::systemRed:
      return NSColor.systemRedColor;
    case Color::Name::accent:
      return NSColor.controlAccentColor;
    case Color::Name::hoverBackground:
      return NSColor.quaternaryLabelColor;
    case Color::Name::selectionBackground:
      return NSColor.unemphasizedSelectedContentBackgroundColor;
    case Color::Name::white:
      return NSColor.whiteColor;
    case Color::Name::black:
      return NSColor.blackColor;
  }
  return NSColor.labelColor;
}

}  // namespace

NSColor* color(Color color) {
  NSColor* found = named(color.name);
  if (color.alpha >= 1) return found;
  // A named colour has components only once the current appearance has made it one of a space.
  NSColor* resolved = [found colorUsingColorSpace:NSColorSpace.sRGBColorSpace];
  return [resolved colorWithAlphaComponent:resolved.alphaComponent * std::max(color.alpha, 0.0)];
}

NSFontWeight weight(FontWeight weight) {
  switch (weight) {
    case FontWeight::regular:
      return NSFontWeightRegular;
    case FontWeight::medium:
      return NSFontWeightMedium;
    case FontWeight::semibold:
      return NSFontWeightSemibold;
    case FontWeight::bold:
      return NSFontWeightBold;
  }
  return NSFontWeightRegular;
}

NSFont* font(const Font& font) {
  return font.monospacedDigits
             ? [NSFont monospacedDigitSystemFontOfSize:font.size weight:weight(font.weight)]
             : [NSFont systemFontOfSize:font.size weight:weight(font.weight)];
}

NSLineBreakMode lineBreakMode(TextTruncation truncation) {
  return truncation == TextTruncation::middle ? NSLineBreakByTruncatingMiddle
                                              : NSLineBreakByTruncatingTail;
}

NSTextAlignment alignment(TextAlignment alignment, bool isMirrored) {
  if (alignment == TextAlignment::center) return NSTextAlignment(NSTextAlignmentCenter);
  const bool isRight = (alignment == TextAlignment::trailing) != isMirrored;
  return NSTextAlignment(isRight ? NSTextAlignmentRight : NSTextAlignmentLeft);
}

NSImage* symbolImage(const SystemSymbol& symbol, NSString* description) {
  return [NSImage imageWithSystemSymbolName:nsString(symbol.name)
                   accessibilityDescription:description];
}

NSImageSymbolConfiguration* symbolConfiguration(const SystemSymbol& symbol) {
  return [NSImageSymbolConfiguration configurationWithPointSize:symbol.pointSize
                                                         weight:weight(symbol.weight)];
}

}  // namespace zephyx::viewLook
