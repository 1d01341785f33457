#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "Platform/macOS/MacNativeView.h"

namespace zephyx {
class Slider;
}

@interface ZephyxSlider : NSSlider <ZephyxNativeView>
- (instancetype)initWithSlider:(std::shared_ptr<zephyx::Slider>)slider;
@end
