#include "Platform/macOS/MacView.h"

#include "Platform/View.h"
#include "Platform/macOS/MacViewPeer.h"

/// Holds the root of a view tree and hands sizes to and fro.
@interface ZephyxViewHost : NSView
- (instancetype)initWithView:(const std::shared_ptr<zephyx::View>&)view;
@end

@implementation ZephyxViewHost {
  std::shared_ptr<zephyx::View> _view;
  std::unique_ptr<zephyx::MacViewPeer> _root;
  BOOL _isHandingSizeOn;
}

- (instancetype)initWithView:(const std::shared_ptr<zephyx::View>&)view {
  const auto size = view->frame().size;
  if ((self = [super initWithFrame:NSMakeRect(0, 0, size.width, size.height)])) {
    _view = view;
    _root = std::make_unique<zephyx::MacViewPeer>(view, nullptr);
    self.autoresizingMask = NSViewWidthSizable;
    self.autoresizesSubviews = NO;
    [self addSubview:_root->native()];
    [self placeRoot];
    __weak ZephyxViewHost* host = self;
    _root->onFrameChange = [host] { [host viewFrameDidChange]; };
  }
  return self;
}

- (void)viewFrameDidChange {
  if (_isHandingSizeOn) return;
  if (self.window.contentView == self) {
    [self handSizeOn];
    return;
  }
  const auto size = _view->frame().size;
  [self setFrameSize:NSMakeSize(size.width, size.height)];
}

- (void)setFrameSize:(NSSize)size {
  [super setFrameSize:size];
  if (_root) [self handSizeOn];
}

- (void)handSizeOn {
  _isHandingSizeOn = YES;
  const NSSize size = self.frame.size;
  _view->setFrame({_view->frame().origin, {size.width, size.height}});
  _isHandingSizeOn = NO;
  [self placeRoot];
}

- (void)placeRoot {
  NSView<ZephyxNativeView>* native = _root->native();
  native.frame = [native nativeFrameForFrame:self.bounds];
}

- (void)setUserInterfaceLayoutDirection:(NSUserInterfaceLayoutDirection)direction {
  [super setUserInterfaceLayoutDirection:direction];
  if (_root) _root->setLayoutDirection(direction);
}

- (void)viewDidChangeEffectiveAppearance {
  [super viewDidChangeEffectiveAppearance];
  if (_root) _root->appearanceDidChange();
}

@end

namespace zephyx {

NSView* makeNativeView(const std::shared_ptr<View>& view) {
  return [[ZephyxViewHost alloc] initWithView:view];
}

}  // namespace zephyx
