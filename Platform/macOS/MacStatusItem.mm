#import "Platform/macOS/MacStatusItem.h"

#include <utility>

#import "Platform/macOS/MacMenu.h"
#import "Platform/macOS/Strings.h"

namespace zephyx {

MacStatusItem::MacStatusItem(double length)
    : item_([NSStatusBar.systemStatusBar statusItemWithLength:length]) {
  // The name under which the system keeps the item's place. That of items without one is shared.
  item_.autosaveName = @"Zephyx";
}

MacStatusItem::~MacStatusItem() {
  [NSObject cancelPreviousPerformRequestsWithTarget:item_.button];
  item_.menu = nil;
  [NSStatusBar.systemStatusBar removeStatusItem:item_];
}

void MacStatusItem::setImage(const std::string& symbol,
                             const std::string& accessibilityDescription) {
  NSImage* image = [NSImage imageWithSystemSymbolName:nsString(symbol)
                             accessibilityDescription:nsString(accessibilityDescription)];
  [image setTemplate:YES];  // `template` is a word of C++
  item_.button.image = image;
}

void MacStatusItem::setMenu(std::shared_ptr<Menu> menu) {
  // The old one first: the same rows may come again, and follow one menu only.
  item_.menu = nil;
  menu_.reset();
  if (!menu) return;
  menu_ = std::make_unique<MacMenu>(std::move(menu));
  item_.menu = menu_->menu();
}

void MacStatusItem::cancelTrackingWithoutAnimation() {
  [item_.menu cancelTrackingWithoutAnimation];
}

void MacStatusItem::performClick() {
  // The click tracks the menu in a loop of its own and returns when it has closed. The caller may
  // be inside a block of the main dispatch queue, which serves nobody until that block is through,
  // Flutter's engines included; so the loop starts from a timer.
  [item_.button performSelector:@selector(performClick:)
                     withObject:nil
                     afterDelay:0
                        inModes:@[ NSRunLoopCommonModes ]];
}

std::shared_ptr<StatusItem> MacStatusBar::makeStatusItem(double length) {
  return std::make_shared<MacStatusItem>(length);
}

}  // namespace zephyx
