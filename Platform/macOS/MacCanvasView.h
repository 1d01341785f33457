#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "Platform/macOS/MacNativeView.h"

namespace zephyx {
class View;
}

/// Shows a view of the host's own drawing.
@interface ZephyxCanvasView : NSView <ZephyxNativeView>
- (instancetype)initWithView:(std::shared_ptr<zephyx::View>)view;
@end
