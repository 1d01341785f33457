#import "Platform/macOS/MacImages.h"

#import <AppKit/AppKit.h>
#import <ImageIO/ImageIO.h>
#include <sys/stat.h>

#include <cstddef>
#include <cstdint>

#import "Platform/macOS/MacImage.h"
#import "Platform/macOS/OwnedRef.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

using ImageSource = OwnedRef<CGImageSourceRef>;

constexpr std::int64_t maximumFileBytes = std::int64_t{512} << 20;
/// Files that are no bitmaps are read whole before it is known whether they are pictures at all.
constexpr std::int64_t maximumDrawingBytes = std::int64_t{16} << 20;

NSDictionary* withoutCache() {
  return @{(__bridge id)kCGImageSourceShouldCache : @NO};
}

bool isBitmap(const ImageSource& source) {
  return source && CGImageSourceGetType(source.get());
}

/// Looks at the headers only; each picture of a file may come to be decoded.
bool hasBoundedPixels(const ImageSource& source) {
  const std::size_t count = CGImageSourceGetCount(source.get());
  for (std::size_t index = 0; index < count; ++index) {
    const auto properties = OwnedRef<CFDictionaryRef>::adopt(CGImageSourceCopyPropertiesAtIndex(
        source.get(), index, (__bridge CFDictionaryRef)withoutCache()));
    NSDictionary* values = (__bridge NSDictionary*)properties.get();
    const double wide = [values[(__bridge id)kCGImagePropertyPixelWidth] doubleValue];
    const double high = [values[(__bridge id)kCGImagePropertyPixelHeight] doubleValue];
    if (wide * high > MacImage::maximumPixels) return false;
  }
  return count > 0;
}

std::shared_ptr<Image> decoded(NSData* data) {
  const auto source = ImageSource::adopt(CGImageSourceCreateWithData(
      (__bridge CFDataRef)data, (__bridge CFDictionaryRef)withoutCache()));
  if (isBitmap(source) && !hasBoundedPixels(source)) return nullptr;
  NSImage* picture = [[NSImage alloc] initWithData:data];
  if (!picture.isValid || picture.representations.count == 0) return nullptr;
  // A drawing has no pixels of its own and is drawn a pixel a point.
  if (picture.size.width * picture.size.height > MacImage::maximumPixels) return nullptr;
  // Decoded pixels are not kept: pictures are drawn once or twice and then dropped.
  picture.cacheMode = NSImageCacheNever;
  return std::make_shared<MacImage>(picture);
}

}  // namespace

std::shared_ptr<Image> MacImages::decode(BytesView data) const {
  @autoreleasepool {
    return data.empty() ? nullptr : decoded(nsData(data));
  }
}

std::shared_ptr<Image> MacImages::decodeFile(const std::string& path) const {
  struct stat status {};
  // Opening a pipe would wait for its writer.
  if (stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return nullptr;
  if (status.st_size > maximumFileBytes) return nullptr;
  @autoreleasepool {
    NSURL* url = [NSURL fileURLWithPath:nsString(path)];
    const auto source = ImageSource::adopt(CGImageSourceCreateWithURL(
        (__bridge CFURLRef)url, (__bridge CFDictionaryRef)withoutCache()));
    if (!isBitmap(source) && status.st_size > maximumDrawingBytes) return nullptr;
    // Not mapped: another program that shortens the file would end this one.
    NSData* data = [NSData dataWithContentsOfURL:url options:0 error:nullptr];
    return data ? decoded(data) : nullptr;
  }
}

}  // namespace zephyx
