#import "Platform/macOS/MacWindow.h"

#include <utility>

#import "Platform/macOS/Coordinates.h"
#import "Platform/macOS/MacFlutterViewController.h"
#import "Platform/macOS/MacView.h"
#import "Platform/macOS/Strings.h"

@interface ZephyxWindow : NSWindow
@property(nonatomic) BOOL mayBecomeKey;
@property(nonatomic) BOOL mayBecomeMain;
@end

@implementation ZephyxWindow

- (BOOL)canBecomeKeyWindow {
  return self.mayBecomeKey;
}

- (BOOL)canBecomeMainWindow {
  return self.mayBecomeMain;
}

// AppKit's own presses the close button, which may be hidden.
- (void)performClose:(id)sender {
  [self orderOut:sender];
}

@end

@interface ZephyxPanel : NSPanel
@property(nonatomic) BOOL mayBecomeKey;
@property(nonatomic) BOOL mayBecomeMain;
@end

@implementation ZephyxPanel

- (BOOL)canBecomeKeyWindow {
  return self.mayBecomeKey;
}

- (BOOL)canBecomeMainWindow {
  return self.mayBecomeMain;
}

- (void)performClose:(id)sender {
  [self orderOut:sender];
}

@end

namespace zephyx {
namespace {

NSWindow* makeNativeWindow(const WindowConfiguration& wanted) {
  const auto make = [&](auto* window) -> NSWindow* {
    window.mayBecomeKey = wanted.canBecomeKey;
    window.mayBecomeMain = wanted.canBecomeMain;
    window.releasedWhenClosed = NO;  // ARC releases it
    return window;
  };
  const NSRect content = nsRect(wanted.contentRect);
  if (wanted.kind == WindowKind::panel) {
    return make([[ZephyxPanel alloc] initWithContentRect:content
                                               styleMask:wanted.styleMask
                                                 backing:NSBackingStoreBuffered
                                                   defer:NO]);
  }
  return make([[ZephyxWindow alloc] initWithContentRect:content
                                              styleMask:wanted.styleMask
                                                backing:NSBackingStoreBuffered
                                                  defer:NO]);
}

/// The topmost view at or beneath `view` that takes the keyboard; nil if none does. An engine's
/// view controller wraps the view that takes it in one that does not.
NSView* viewTakingKeyboard(NSView* view) {
  if (view.acceptsFirstResponder) return view;
  for (NSView* subview in view.subviews.reverseObjectEnumerator) {
    if (NSView* found = viewTakingKeyboard(subview)) return found;
  }
  return nil;
}

}  // namespace

MacWindow::MacWindow(const WindowConfiguration& configuration)
    : Window(configuration), window_(makeNativeWindow(configuration)) {
  MacWindow::applyConfiguration();
}

MacWindow::~MacWindow() {
  MacWindow::setContentViewController(nullptr);
  [window_ close];
}

Rect MacWindow::frame() const {
  return rectOf(window_.frame);
}

void MacWindow::setFrame(Rect frame) {
  [window_ setFrame:nsRect(frame) display:YES];
}

void MacWindow::center() {
  [window_ center];
}

bool MacWindow::isVisible() const {
  return window_.visible;
}

bool MacWindow::isKeyWindow() const {
  return window_.keyWindow;
}

void MacWindow::makeKeyAndOrderFront() {
  [window_ makeKeyAndOrderFront:nil];
}

void MacWindow::orderFrontRegardless() {
  [window_ orderFrontRegardless];
}

void MacWindow::orderOut() {
  [window_ orderOut:nil];
}

void MacWindow::setContentViewController(std::shared_ptr<FlutterViewController> controller) {
  auto content = std::dynamic_pointer_cast<MacFlutterViewController>(std::move(controller));
  window_.contentViewController = content ? content->controller() : nil;
  if (!content) window_.contentView = [[NSView alloc] initWithFrame:NSZeroRect];
  content_ = std::move(content);
}

void MacWindow::setContentView(std::shared_ptr<View> view) {
  setContentViewController(nullptr);
  if (view) window_.contentView = makeNativeView(view);
}

void MacWindow::makeContentFirstResponder() {
  [window_ makeFirstResponder:viewTakingKeyboard(window_.contentView)];
}

std::string MacWindow::firstResponderDescription() const {
  NSResponder* responder = window_.firstResponder;
  // A window is its own first responder while nothing in it has the keyboard.
  return !responder || responder == window_ ? "nil" : utf8String(responder.description);
}

void MacWindow::applyConfiguration() {
  const auto& wanted = configuration();
  // First, for it decides which buttons there are.
  if (window_.styleMask != wanted.styleMask) window_.styleMask = wanted.styleMask;
  window_.title = nsString(wanted.title);
  window_.titlebarAppearsTransparent = wanted.titlebarAppearsTransparent;
  window_.titleVisibility = wanted.titleHidden ? NSWindowTitleHidden : NSWindowTitleVisible;
  for (const NSWindowButton button :
       {NSWindowCloseButton, NSWindowMiniaturizeButton, NSWindowZoomButton}) {
    [window_ standardWindowButton:button].hidden = wanted.standardButtonsHidden;
  }
  window_.minSize = nsSize(wanted.minimumSize);
  window_.movableByWindowBackground = wanted.movableByWindowBackground;
  window_.hidesOnDeactivate = wanted.hidesOnDeactivate;
  window_.alphaValue = wanted.alpha;
  window_.hasShadow = wanted.hasShadow;
  window_.ignoresMouseEvents = wanted.ignoresMouseEvents;
  window_.collectionBehavior = wanted.collectionBehavior;
  applyBackground();
  applyPanelProperties();
  // Setting a level, even the same, brings a window to the front of it.
  if (window_.level != wanted.level) window_.level = wanted.level;
}

void MacWindow::applyBackground() {
  const bool transparent = configuration().transparentBackground;
  window_.opaque = !transparent;
  window_.backgroundColor = transparent ? NSColor.clearColor : NSColor.windowBackgroundColor;
}

// A panel that becomes a floating one takes that level: the configured one is set after it.
void MacWindow::applyPanelProperties() {
  if (configuration().kind != WindowKind::panel) return;
  auto* panel = static_cast<NSPanel*>(window_);
  const bool floating = configuration().floatingPanel;
  if (panel.floatingPanel != floating) panel.floatingPanel = floating;
}

}  // namespace zephyx
