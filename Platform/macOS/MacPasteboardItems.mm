#import "Platform/macOS/MacPasteboardItems.h"

namespace zephyx {
namespace {

constexpr NSUInteger maximumBytes = NSUInteger{512} << 20;  // of all items together

NSArray<NSPasteboardItem*>* copyOf(NSArray<NSPasteboardItem*>* items, NSUInteger budget) {
  NSMutableArray<NSPasteboardItem*>* copies = [NSMutableArray array];
  for (NSPasteboardItem* item in items) {
    auto* copy = [[NSPasteboardItem alloc] init];
    for (NSPasteboardType type in item.types) {
      NSData* data = [item dataForType:type];
      if (!data || data.length > budget) continue;
      budget -= data.length;
      [copy setData:data forType:type];
    }
    if (copy.types.count > 0) [copies addObject:copy];
  }
  return copies;
}

}  // namespace

MacPasteboardItems::MacPasteboardItems(NSPasteboard* pasteboard) {
  @autoreleasepool {
    const NSInteger changeCount = pasteboard.changeCount;
    NSArray<NSPasteboardItem*>* copies = copyOf(pasteboard.pasteboardItems, maximumBytes);
    items_ = pasteboard.changeCount == changeCount ? copies : @[];
  }
}

// An item belongs to one pasteboard for good, so each writing gets its own.
NSArray<NSPasteboardItem*>* MacPasteboardItems::nativeItems() const {
  return copyOf(items_, maximumBytes);
}

}  // namespace zephyx
