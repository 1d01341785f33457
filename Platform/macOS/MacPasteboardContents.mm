#import "Platform/macOS/MacPasteboardContents.h"

#include <cstddef>
#include <utility>

#include "Platform/Workspace.h"
#import "Platform/macOS/PasteboardAccess.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

constexpr NSUInteger maximumBytes = NSUInteger{512} << 20;

/// The file manager names files by their number on the volume, which says nothing to the user.
/// Of several files, one a line, the first is meant.
NSString* plainFileUrl(NSString* text) {
  NSString* first = [text componentsSeparatedByString:@"\n"].firstObject;
  NSURL* url = [NSURL URLWithString:first];
  NSString* plain = url.isFileReferenceURL ? url.filePathURL.absoluteString : nil;
  return plain ? plain : first;
}

}  // namespace

MacPasteboardContents::MacPasteboardContents(std::shared_ptr<PasteboardAccess> access,
                                             NSInteger changeCount)
    : access_(std::move(access)), changeCount_(changeCount) {}

template <typename Value, typename Read>
Value MacPasteboardContents::read(Read body) const {
  @autoreleasepool {
    const std::lock_guard lock(access_->mutex);
    NSPasteboard* pasteboard = access_->pasteboard;
    if (pasteboard.changeCount != changeCount_) return {};
    Value value = body(pasteboard);
    if (pasteboard.changeCount != changeCount_) return {};
    return value;
  }
}

std::vector<std::string> MacPasteboardContents::types() const {
  return read<std::vector<std::string>>([](NSPasteboard* pasteboard) {
    std::vector<std::string> types;
    for (NSPasteboardType type in pasteboard.types) types.push_back(utf8String(type));
    return types;
  });
}

std::optional<Bytes> MacPasteboardContents::data(const std::string& type) const {
  return read<std::optional<Bytes>>([&type](NSPasteboard* pasteboard) -> std::optional<Bytes> {
    NSData* data = [pasteboard dataForType:nsString(type)];
    if (!data || data.length > maximumBytes) return std::nullopt;
    return bytes(data);
  });
}

std::optional<std::string> MacPasteboardContents::string(const std::string& type) const {
  return read<std::optional<std::string>>(
      [&type](NSPasteboard* pasteboard) -> std::optional<std::string> {
        NSString* text = [pasteboard stringForType:nsString(type)];
        if (!text || text.length > maximumBytes) return std::nullopt;
        if (type == pasteboardType::fileUrl) text = plainFileUrl(text);
        return utf8String(text);
      });
}

}  // namespace zephyx
