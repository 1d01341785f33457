#include "Platform/macOS/QuartzCanvas.h"

#include <algorithm>
#include <numbers>

#include "Platform/macOS/MacViewLook.h"
#include "Platform/macOS/OwnedRef.h"
#include "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

constexpr double radiansPerDegree = std::numbers::pi / 180;

}  // namespace

void QuartzCanvas::strokeArc(Point center, double radius, double startDegrees, double sweepDegrees,
                             double lineWidth, Color color) {
  if (sweepDegrees == 0) return;
  const NSPoint middle = coordinates_.fromHost(center);
  // Of a relative arc, a whole turn is a circle; between two equal angles there would be nothing.
  const auto path = OwnedRef<CGMutablePathRef>::adopt(CGPathCreateMutable());
  CGPathAddRelativeArc(path.get(), nullptr, middle.x, middle.y, radius,
                       startDegrees * radiansPerDegree, sweepDegrees * radiansPerDegree);
  CGContextSaveGState(context_);
  CGContextAddPath(context_, path.get());
  CGContextSetLineWidth(context_, lineWidth);
  CGContextSetLineCap(context_, kCGLineCapRound);
  CGContextSetStrokeColorWithColor(context_, viewLook::color(color).CGColor);
  CGContextStrokePath(context_);
  CGContextRestoreGState(context_);
}

void QuartzCanvas::addRoundedRect(const Rect& rect, double cornerRadius) {
  // A radius of more than half a side is refused with an exception.
  const double radius =
      std::clamp(cornerRadius, 0.0, std::max(0.0, std::min(rect.size.width, rect.size.height) / 2));
  const auto path = OwnedRef<CGPathRef>::adopt(
      CGPathCreateWithRoundedRect(coordinates_.fromHost(rect), radius, radius, nullptr));
  CGContextAddPath(context_, path.get());
}

void QuartzCanvas::fillRoundedRect(Rect rect, double cornerRadius, Color color) {
  CGContextSaveGState(context_);
  addRoundedRect(rect, cornerRadius);
  CGContextSetFillColorWithColor(context_, viewLook::color(color).CGColor);
  CGContextFillPath(context_);
  CGContextRestoreGState(context_);
}

void QuartzCanvas::strokeRoundedRect(Rect rect, double cornerRadius, double lineWidth,
                                     Color color) {
  CGContextSaveGState(context_);
  addRoundedRect(rect, cornerRadius);
  CGContextSetLineWidth(context_, lineWidth);
  CGContextSetStrokeColorWithColor(context_, viewLook::color(color).CGColor);
  CGContextStrokePath(context_);
  CGContextRestoreGState(context_);
}

void QuartzCanvas::drawText(const std::string& text, Rect rect, const TextStyle& style) {
  NSMutableParagraphStyle* paragraph = [[NSMutableParagraphStyle alloc] init];
  paragraph.alignment = viewLook::alignment(style.alignment, coordinates_.isMirrored());
  paragraph.lineBreakMode = viewLook::lineBreakMode(style.truncation);
  NSDictionary<NSAttributedStringKey, id>* attributes = @{
    NSFontAttributeName : viewLook::font(style.font),
    NSForegroundColorAttributeName : viewLook::color(style.color),
    NSParagraphStyleAttributeName : paragraph,
  };
  NSString* string = nsString(text);
  NSRect place = coordinates_.fromHost(rect);
  const double height = [string sizeWithAttributes:attributes].height;
  place.origin.y += (place.size.height - height) / 2;
  place.size.height = height;
  [string drawInRect:place withAttributes:attributes];
}

void QuartzCanvas::drawSymbol(const SystemSymbol& symbol, Rect rect) {
  NSImageSymbolConfiguration* tint =
      [NSImageSymbolConfiguration configurationWithPaletteColors:@[ viewLook::color(symbol.tint) ]];
  NSImage* image = [viewLook::symbolImage(symbol, nil)
      imageWithSymbolConfiguration:[viewLook::symbolConfiguration(symbol)
                                       configurationByApplyingConfiguration:tint]];
  if (!image) return;
  const NSRect place = coordinates_.fromHost(rect);
  const NSSize size = image.size;
  [image drawInRect:NSMakeRect(NSMidX(place) - size.width / 2, NSMidY(place) - size.height / 2,
                               size.width, size.height)];
}

}  // namespace zephyx
