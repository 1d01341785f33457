#include "Platform/macOS/MacCanvasView.h"

#include <utility>

#include "Platform/View.h"
#include "Platform/macOS/MacViewCoordinates.h"
#include "Platform/macOS/QuartzCanvas.h"
#include "Platform/macOS/Strings.h"

namespace {

constexpr CGFloat focusRingRadius = 6;

/// Clicks on such a view are those of the view around it.
bool belongsToClickableView(const zephyx::View& view) {
  for (const auto* each = view.parent(); each; each = each->parent()) {
    if (each->acceptsClicks()) return true;
  }
  return false;
}

}  // namespace

@implementation ZephyxCanvasView {
  std::shared_ptr<zephyx::View> _view;
  NSTrackingArea* _trackingArea;
  BOOL _isHovered;
  BOOL _isPressed;
}

- (instancetype)initWithView:(std::shared_ptr<zephyx::View>)view {
  if ((self = [super initWithFrame:NSZeroRect])) {
    _view = std::move(view);
    self.wantsLayer = YES;
    self.layerContentsRedrawPolicy = NSViewLayerContentsRedrawOnSetNeedsDisplay;
    self.autoresizesSubviews = NO;
  }
  return self;
}

- (void)showView {
  const bool isButton = _view->acceptsClicks();
  const bool isGauge = !_view->accessibilityValue().empty();
  self.accessibilityElement = isButton || isGauge || !_view->accessibilityLabel().empty();
  self.accessibilityRole = isButton  ? NSAccessibilityButtonRole
                           : isGauge ? NSAccessibilityLevelIndicatorRole
                                     : NSAccessibilityGroupRole;
  self.accessibilityValue = isGauge ? zephyx::nsString(_view->accessibilityValue()) : nil;
  self.needsDisplay = YES;
}

- (NSRect)nativeFrameForFrame:(NSRect)frame {
  return frame;
}

- (zephyx::MacViewCoordinates)coordinates {
  return {_view->bounds().size, zephyx::MacViewCoordinates::isMirrored(self)};
}

- (void)drawRect:(NSRect)dirtyRect {
  [super drawRect:dirtyRect];
  const auto coordinates = [self coordinates];
  zephyx::QuartzCanvas canvas(NSGraphicsContext.currentContext.CGContext, coordinates);
  _view->draw(canvas);
}

// Pointer

- (void)updateTrackingAreas {
  [super updateTrackingAreas];
  if (_trackingArea) [self removeTrackingArea:_trackingArea];
  // The window of a menu is not the key window, and its application need not be active.
  _trackingArea =
      [[NSTrackingArea alloc] initWithRect:self.bounds
                                   options:NSTrackingMouseEnteredAndExited | NSTrackingActiveAlways
                                     owner:self
                                  userInfo:nil];
  [self addTrackingArea:_trackingArea];
  if (_isHovered && ![self isPointerInside]) [self setHovered:NO];
}

- (BOOL)isPointerInside {
  if (!self.window) return NO;
  const NSPoint place = [self convertPoint:self.window.mouseLocationOutsideOfEventStream
                                  fromView:nil];
  return NSMouseInRect(place, self.bounds, self.flipped);
}

- (void)setHovered:(BOOL)hovered {
  if (_isHovered == hovered) return;
  _isHovered = hovered;
  const auto view = _view;
  if (hovered) {
    view->mouseEntered();
  } else {
    view->mouseExited();
  }
}

- (void)mouseEntered:(NSEvent*)event {
  [super mouseEntered:event];
  [self setHovered:YES];
}

- (void)mouseExited:(NSEvent*)event {
  [super mouseExited:event];
  [self setHovered:NO];
}

// No exit is reported for a view that goes from under the pointer.
- (void)viewDidHide {
  [super viewDidHide];
  [self setHovered:NO];
}

- (void)viewDidMoveToWindow {
  [super viewDidMoveToWindow];
  if (!self.window) [self setHovered:NO];
}

- (NSView*)hitTest:(NSPoint)point {
  NSView* hit = [super hitTest:point];
  if (hit == self && !_view->acceptsClicks() && belongsToClickableView(*_view)) return nil;
  return hit;
}

- (BOOL)acceptsFirstMouse:(NSEvent*)event {
  return _view->acceptsClicks() || [super acceptsFirstMouse:event];
}

- (void)mouseDown:(NSEvent*)event {
  _isPressed = _view->acceptsClicks();
  if (!_isPressed) [super mouseDown:event];
}

- (void)mouseUp:(NSEvent*)event {
  // Of a menu that was pulled down with the button held, a row is chosen by the release alone.
  const bool isClick = _isPressed || (_view->acceptsClicks() && self.enclosingMenuItem);
  _isPressed = NO;
  if (!isClick) return [super mouseUp:event];
  const NSPoint place = [self convertPoint:event.locationInWindow fromView:nil];
  if (!NSMouseInRect(place, self.bounds, self.flipped)) return;
  const auto view = _view;
  view->clicked([self coordinates].toHost(place));
}

// Keyboard and assistive technology

- (void)clickInTheMiddle {
  const auto view = _view;
  const auto bounds = view->bounds();
  view->clicked({bounds.midX(), bounds.midY()});
}

- (BOOL)acceptsFirstResponder {
  return _view->acceptsClicks();
}

- (void)keyDown:(NSEvent*)event {
  constexpr NSEventModifierFlags chords =
      NSEventModifierFlagCommand | NSEventModifierFlagControl | NSEventModifierFlagOption;
  NSString* characters = event.charactersIgnoringModifiers;
  const bool isClick = [characters isEqualToString:@" "] || [characters isEqualToString:@"\r"] ||
                       [characters isEqualToString:@"\x03"];  // Enter on the keypad
  if (!_view->acceptsClicks() || !isClick || (event.modifierFlags & chords)) {
    return [super keyDown:event];
  }
  [self clickInTheMiddle];
}

- (NSRect)focusRingMaskBounds {
  return self.bounds;
}

- (void)drawFocusRingMask {
  [[NSBezierPath bezierPathWithRoundedRect:self.bounds
                                   xRadius:focusRingRadius
                                   yRadius:focusRingRadius] fill];
}

- (BOOL)accessibilityPerformPress {
  if (!_view->acceptsClicks()) return NO;
  [self clickInTheMiddle];
  return YES;
}

@end
