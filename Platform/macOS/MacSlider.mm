#include "Platform/macOS/MacSlider.h"

#include <utility>

#include "Platform/Slider.h"

@implementation ZephyxSlider {
  std::shared_ptr<zephyx::Slider> _slider;
}

- (instancetype)initWithSlider:(std::shared_ptr<zephyx::Slider>)slider {
  if ((self = [super initWithFrame:NSZeroRect])) {
    _slider = std::move(slider);
    self.minValue = 0;
    self.maxValue = 1;
    self.continuous = YES;
    // A control does not retain its target.
    self.target = self;
    self.action = @selector(userMoved:);
  }
  return self;
}

- (void)userMoved:(id)sender {
  const auto slider = _slider;
  slider->move(self.doubleValue);
}

- (void)showView {
  self.enabled = _slider->isEnabled();
  if (self.doubleValue != _slider->value()) self.doubleValue = _slider->value();
}

- (NSRect)nativeFrameForFrame:(NSRect)frame {
  return frame;
}

@end
