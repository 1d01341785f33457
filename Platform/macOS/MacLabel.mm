#include "Platform/macOS/MacLabel.h"

#include <cmath>
#include <utility>

#include "Platform/Label.h"
#include "Platform/macOS/MacViewCoordinates.h"
#include "Platform/macOS/MacViewLook.h"
#include "Platform/macOS/Strings.h"

namespace {

/// The room that a text field leaves at both ends of its text.
constexpr CGFloat textInset = 2;

}  // namespace

@implementation ZephyxLabel {
  std::shared_ptr<zephyx::Label> _label;
}

+ (instancetype)labelShowing:(std::shared_ptr<zephyx::Label>)label {
  ZephyxLabel* made = [self labelWithString:@""];
  made->_label = std::move(label);
  // Not -usesSingleLineMode, which puts the baseline where it is right for one font only.
  made.maximumNumberOfLines = 1;
  return made;
}

- (void)showView {
  const auto& style = _label->style();
  self.font = zephyx::viewLook::font(style.font);
  self.textColor = zephyx::viewLook::color(style.color);
  self.lineBreakMode = zephyx::viewLook::lineBreakMode(style.truncation);
  self.alignment =
      zephyx::viewLook::alignment(style.alignment, zephyx::MacViewCoordinates::isMirrored(self));
  self.stringValue = zephyx::nsString(_label->text());
}

- (NSRect)nativeFrameForFrame:(NSRect)frame {
  // A text field draws from its top.
  const CGFloat height = std::ceil(self.intrinsicContentSize.height);
  const CGFloat bottom = frame.origin.y + std::floor((frame.size.height - height) / 2);
  return NSMakeRect(frame.origin.x - textInset, bottom, frame.size.width + 2 * textInset, height);
}

- (NSView*)hitTest:(NSPoint)point {
  // Clicks belong to the view behind the text. A text with a tool tip is found by the pointer.
  return self.toolTip.length > 0 ? [super hitTest:point] : nil;
}

- (void)mouseDown:(NSEvent*)event {
  [self.nextResponder mouseDown:event];
}

- (void)mouseUp:(NSEvent*)event {
  [self.nextResponder mouseUp:event];
}

@end
