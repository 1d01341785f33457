#include "Platform/macOS/MacSwitch.h"

#include <utility>

#include "Platform/Switch.h"

@implementation ZephyxSwitch {
  std::shared_ptr<zephyx::Switch> _control;
}

- (instancetype)initWithSwitch:(std::shared_ptr<zephyx::Switch>)control {
  if ((self = [super initWithFrame:NSZeroRect])) {
    _control = std::move(control);
    // A control does not retain its target.
    self.target = self;
    self.action = @selector(userFlipped:);
  }
  return self;
}

- (void)userFlipped:(id)sender {
  const auto control = _control;
  if ((self.state == NSControlStateValueOn) != control->isOn()) control->toggle();
}

- (void)showView {
  self.enabled = _control->isEnabled();
  const NSControlStateValue wanted =
      _control->isOn() ? NSControlStateValueOn : NSControlStateValueOff;
  if (self.state != wanted) self.state = wanted;
}

- (NSRect)nativeFrameForFrame:(NSRect)frame {
  const NSSize size = self.intrinsicContentSize;
  return NSMakeRect(NSMidX(frame) - size.width / 2, NSMidY(frame) - size.height / 2, size.width,
                    size.height);
}

@end
