#include "Platform/macOS/MacPushButton.h"

#include <utility>

#include "Platform/PushButton.h"
#include "Platform/macOS/Strings.h"

@implementation ZephyxPushButton {
  std::shared_ptr<zephyx::PushButton> _button;
}

- (instancetype)initWithButton:(std::shared_ptr<zephyx::PushButton>)button {
  if ((self = [super initWithFrame:NSZeroRect])) {
    _button = std::move(button);
    [self setButtonType:NSButtonTypeMomentaryPushIn];
    self.bezelStyle = NSBezelStyleRounded;
    // A control does not retain its target.
    self.target = self;
    self.action = @selector(userClicked:);
  }
  return self;
}

- (void)userClicked:(id)sender {
  const auto button = _button;
  button->click();
}

- (void)showView {
  self.title = zephyx::nsString(_button->title());
  self.enabled = _button->isEnabled();
}

- (NSRect)nativeFrameForFrame:(NSRect)frame {
  // The bezel is smaller than the button by its alignment insets.
  return [self frameForAlignmentRect:frame];
}

@end
