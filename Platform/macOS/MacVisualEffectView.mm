#import "Platform/macOS/MacVisualEffectView.h"

#import <QuartzCore/QuartzCore.h>

#import "Platform/macOS/Coordinates.h"

namespace zephyx {
namespace {

constexpr CGFloat dimming = 0.6;

NSView* makeDimmingView(NSRect frame) {
  auto* view = [[NSView alloc] initWithFrame:frame];
  view.wantsLayer = YES;
  view.layer.backgroundColor = [NSColor colorWithWhite:0 alpha:dimming].CGColor;
  view.autoresizingMask = NSViewWidthSizable | NSViewHeightSizable;
  return view;
}

/// The material has a mask of its own. It follows the layer's corners too, but not on every display
/// and not when the user has reduced transparency.
NSImage* roundedMask(CGFloat radius) {
  const CGFloat side = 2 * radius + 1;
  NSImage* mask = [NSImage imageWithSize:NSMakeSize(side, side)
                                 flipped:NO
                          drawingHandler:^(NSRect bounds) {
                            [[NSBezierPath bezierPathWithRoundedRect:bounds
                                                             xRadius:radius
                                                             yRadius:radius] fill];
                            return YES;
                          }];
  mask.capInsets = NSEdgeInsetsMake(radius, radius, radius, radius);
  mask.resizingMode = NSImageResizingMode(NSImageResizingModeStretch);
  return mask;
}

}  // namespace

MacVisualEffectView::MacVisualEffectView(NSView* host)
    : view_([[NSVisualEffectView alloc] initWithFrame:NSZeroRect]) {
  view_.material = NSVisualEffectMaterialHUDWindow;
  view_.blendingMode = NSVisualEffectBlendingModeBehindWindow;
  view_.state = NSVisualEffectStateActive;
  view_.appearance = [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];
  view_.wantsLayer = YES;
  if (@available(macOS 14.0, *)) {
    view_.clipsToBounds = YES;  // from here on AppKit sets the layer's `masksToBounds` by this
  } else {
    view_.layer.masksToBounds = YES;
  }
  view_.hidden = YES;
  [view_ addSubview:makeDimmingView(view_.bounds)];
  [host addSubview:view_ positioned:NSWindowBelow relativeTo:nil];
}

void MacVisualEffectView::setFrame(Rect frame) {
  view_.frame = nsRect(frame);
}

void MacVisualEffectView::setCornerRadius(double radius) {
  if (view_.layer.cornerRadius == radius) return;
  view_.layer.cornerRadius = radius;
  view_.maskImage = radius > 0 ? roundedMask(radius) : nil;
}

void MacVisualEffectView::setHidden(bool hidden) {
  view_.hidden = hidden;
}

}  // namespace zephyx
