#include "Platform/macOS/MacSymbolView.h"

#include <utility>

#include "Platform/SymbolImage.h"
#include "Platform/macOS/MacViewLook.h"
#include "Platform/macOS/Strings.h"

@implementation ZephyxSymbolView {
  std::shared_ptr<zephyx::SymbolImage> _symbol;
}

- (instancetype)initWithImage:(std::shared_ptr<zephyx::SymbolImage>)image {
  if ((self = [super initWithFrame:NSZeroRect])) {
    _symbol = std::move(image);
    self.imageScaling = NSImageScaleNone;
    self.imageAlignment = NSImageAlignCenter;
  }
  return self;
}

- (void)showView {
  const auto& symbol = _symbol->symbol();
  const bool isDescribed = !_symbol->accessibilityLabel().empty();
  self.symbolConfiguration = zephyx::viewLook::symbolConfiguration(symbol);
  self.contentTintColor = zephyx::viewLook::color(symbol.tint);
  self.image = zephyx::viewLook::symbolImage(
      symbol, isDescribed ? zephyx::nsString(_symbol->accessibilityLabel()) : nil);
  self.accessibilityElement = isDescribed;
}

- (NSRect)nativeFrameForFrame:(NSRect)frame {
  return frame;
}

- (NSView*)hitTest:(NSPoint)point {
  return self.toolTip.length > 0 ? [super hitTest:point] : nil;
}

- (void)mouseDown:(NSEvent*)event {
  [self.nextResponder mouseDown:event];
}

- (void)mouseUp:(NSEvent*)event {
  [self.nextResponder mouseUp:event];
}

@end
