#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "Platform/macOS/MacNativeView.h"

namespace zephyx {
class Switch;
}

@interface ZephyxSwitch : NSSwitch <ZephyxNativeView>
- (instancetype)initWithSwitch:(std::shared_ptr<zephyx::Switch>)control;
@end
