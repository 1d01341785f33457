#import "Platform/macOS/MacImage.h"

#include <algorithm>
#include <cmath>

#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

NSBitmapImageRep* emptyBitmap(NSInteger wide, NSInteger high) {
  NSBitmapImageRep* bitmap =
      [[NSBitmapImageRep alloc] initWithBitmapDataPlanes:nullptr
                                              pixelsWide:wide
                                              pixelsHigh:high
                                           bitsPerSample:8
                                         samplesPerPixel:4
                                                hasAlpha:YES
                                                isPlanar:NO
                                          colorSpaceName:NSCalibratedRGBColorSpace
                                             bytesPerRow:0
                                            bitsPerPixel:0];
  return [bitmap bitmapImageRepByRetaggingWithColorSpace:NSColorSpace.sRGBColorSpace];
}

}  // namespace

MacImage::MacImage(NSImage* picture) : picture_(picture) {}

Size MacImage::size() const {
  return {picture_.size.width, picture_.size.height};
}

PixelSize MacImage::pixelSize() const {
  NSImageRep* first = picture_.representations.firstObject;
  return {static_cast<int>(first.pixelsWide), static_cast<int>(first.pixelsHigh)};
}

std::shared_ptr<Image> MacImage::drawnAtSize(Size size) const {
  // Written so that a value that is not a number is refused as well.
  if (!(size.width > 0 && size.height > 0)) return nullptr;
  if (!(size.width <= maximumPixels && size.height <= maximumPixels)) return nullptr;
  const double wide = std::max(1.0, std::round(size.width));
  const double high = std::max(1.0, std::round(size.height));
  if (wide * high > maximumPixels) return nullptr;

  @autoreleasepool {
    // One pixel a point. Locking focus instead would take the scale of whatever screen there is,
    // and is for the main thread.
    NSBitmapImageRep* bitmap =
        emptyBitmap(static_cast<NSInteger>(wide), static_cast<NSInteger>(high));
    NSGraphicsContext* context =
        bitmap ? [NSGraphicsContext graphicsContextWithBitmapImageRep:bitmap] : nil;
    if (!context) return nullptr;
    const NSRect whole = NSMakeRect(0, 0, wide, high);
    {
      const std::lock_guard lock(mutex_);
      [NSGraphicsContext saveGraphicsState];
      NSGraphicsContext.currentContext = context;
      context.imageInterpolation = NSImageInterpolationHigh;
      [picture_ drawInRect:whole
                  fromRect:NSZeroRect
                 operation:NSCompositingOperationSourceOver
                  fraction:1
            respectFlipped:NO
                     hints:nil];
      [context flushGraphics];
      [NSGraphicsContext restoreGraphicsState];
    }
    NSImage* drawn = [[NSImage alloc] initWithSize:whole.size];
    [drawn addRepresentation:bitmap];
    return std::make_shared<MacImage>(drawn);
  }
}

Bytes MacImage::pngRepresentation() const {
  @autoreleasepool {
    const std::lock_guard lock(mutex_);
    CGImageRef pixels = [picture_ CGImageForProposedRect:nullptr context:nil hints:nil];
    if (!pixels) return {};
    NSBitmapImageRep* bitmap = [[NSBitmapImageRep alloc] initWithCGImage:pixels];
    return bytes([bitmap representationUsingType:NSBitmapImageFileTypePNG properties:@{}]);
  }
}

NSImage* nsImage(const Image& image) {
  if (const auto* own = dynamic_cast<const MacImage*>(&image)) return own->picture();
  return [[NSImage alloc] initWithData:nsData(image.pngRepresentation())];
}

}  // namespace zephyx
