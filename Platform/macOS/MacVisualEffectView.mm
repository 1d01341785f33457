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

}  // namespace

MacVisualEffectView::MacVisualEffectView(NSView* host)
    : view_([[NSVisualEffectView alloc] initWithFrame:NSZeroRect]) {
  view_.material = NSVisualEffectMaterialHUDWindow;
  view_.blendingMode = NSVisualEffectBlendingModeBehindWindow;
  view_.state = NSVisualEffectStateActive;
  view_.appearance = [NSAppearance appearanceNamed:NSAppearanceNameDarkAqua];
  view_.wantsLayer = YES;
  view_.layer.masksToBounds = YES;
  view_.hidden = YES;
  [view_ addSubview:makeDimmingView(view_.bounds)];
  [host addSubview:view_ positioned:NSWindowBelow relativeTo:nil];
}

void MacVisualEffectView::setFrame(Rect frame) {
  view_.frame = nsRect(frame);
}

void MacVisualEffectView::setCornerRadius(double radius) {
  view_.layer.cornerRadius = radius;
}

void MacVisualEffectView::setHidden(bool hidden) {
  view_.hidden = hidden;
}

}  // namespace zephyx
