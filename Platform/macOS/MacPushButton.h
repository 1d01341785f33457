#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "Platform/macOS/MacNativeView.h"

namespace zephyx {
class PushButton;
}

@interface ZephyxPushButton : NSButton <ZephyxNativeView>
- (instancetype)initWithButton:(std::shared_ptr<zephyx::PushButton>)button;
@end
