#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "Platform/macOS/MacNativeView.h"

namespace zephyx {
class Label;
}

@interface ZephyxLabel : NSTextField <ZephyxNativeView>
+ (instancetype)labelShowing:(std::shared_ptr<zephyx::Label>)label;
@end
