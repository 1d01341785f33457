#import "Platform/macOS/MacPasteboard.h"

#include <utility>

#include "Platform/Dispatch.h"

#import "Platform/macOS/MacImage.h"
#import "Platform/macOS/MacPasteboardContents.h"
#import "Platform/macOS/MacPasteboardItems.h"
#import "Platform/macOS/PasteboardAccess.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {

MacPasteboard::MacPasteboard(Dispatch& dispatch)
    : dispatch_(dispatch), access_(std::make_shared<PasteboardAccess>()) {}

MacPasteboard::~MacPasteboard() = default;

std::int64_t MacPasteboard::changeCount() const {
  // Never waits: a reader may have to wait for another program. Who asks again sees the change.
  if (const std::unique_lock lock(access_->mutex, std::try_to_lock); lock) {
    changeCount_ = access_->pasteboard.changeCount;
  }
  return changeCount_;
}

std::shared_ptr<PasteboardContents> MacPasteboard::contents() const {
  return std::make_shared<MacPasteboardContents>(access_, static_cast<NSInteger>(changeCount()));
}

Registration MacPasteboard::observeChanges(PasteboardReadPlan, std::function<void()>) {
  return {};
}

std::int64_t MacPasteboard::clearContents() {
  const std::lock_guard lock(access_->mutex);
  changeCount_ = [access_->pasteboard clearContents];
  return changeCount_;
}

// Text and URL become two forms of one item. As two items they would be pasted as two lines, since
// the text of all items is put together for the reader.
bool MacPasteboard::writeString(const std::string& text) {
  const std::lock_guard lock(access_->mutex);
  return [access_->pasteboard setString:nsString(text) forType:NSPasteboardTypeString];
}

bool MacPasteboard::writeUrl(const std::string& text) {
  NSURL* url = [NSURL URLWithString:nsString(text)];
  if (!url) return false;
  const std::lock_guard lock(access_->mutex);
  // As an object a file also gets the older forms that programs still ask for.
  if (url.isFileURL) return [access_->pasteboard writeObjects:@[ url ]];
  return [access_->pasteboard setString:url.absoluteString forType:NSPasteboardTypeURL];
}

bool MacPasteboard::writeImage(const Image& image) {
  NSImage* picture = nsImage(image);
  if (!picture) return false;
  const std::lock_guard lock(access_->mutex);
  return [access_->pasteboard writeObjects:@[ picture ]];
}

// Away from the main thread: an owner that has promised its data makes them now.
void MacPasteboard::copyItems(
    std::function<void(std::shared_ptr<const PasteboardItems>)> done) const {
  dispatch_.globalQueue().async(
      [access = access_, &mainQueue = dispatch_.mainQueue(), done = std::move(done)]() mutable {
        std::shared_ptr<const PasteboardItems> items;
        {
          const std::lock_guard lock(access->mutex);
          items = std::make_shared<MacPasteboardItems>(access->pasteboard);
        }
        mainQueue.async([items = std::move(items), done = std::move(done)] { done(items); });
      });
}

bool MacPasteboard::writeItems(const PasteboardItems& items) {
  const auto& saved = dynamic_cast<const MacPasteboardItems&>(items);
  if (saved.isEmpty()) return false;
  const std::lock_guard lock(access_->mutex);
  return [access_->pasteboard writeObjects:saved.nativeItems()];
}

}  // namespace zephyx
