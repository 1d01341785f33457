#pragma once

#import <AppKit/AppKit.h>

#include <memory>

#include "Platform/macOS/MacNativeView.h"

namespace zephyx {
class SymbolImage;
}

@interface ZephyxSymbolView : NSImageView <ZephyxNativeView>
- (instancetype)initWithImage:(std::shared_ptr<zephyx::SymbolImage>)image;
@end
