#import "Platform/macOS/MacFlutterViewController.h"

#import <QuartzCore/QuartzCore.h>

#include <utility>

#import "Platform/macOS/Coordinates.h"
#import "Platform/macOS/MacFlutterEngine.h"
#import "Platform/macOS/MacVisualEffectView.h"

namespace zephyx {

MacFlutterViewController::MacFlutterViewController(::FlutterViewController* controller,
                                                   std::shared_ptr<MacFlutterEngine> engine)
    : engine_(std::move(engine)), controller_(controller) {}

std::shared_ptr<FlutterEngine> MacFlutterViewController::engine() const {
  return engine_;
}

void MacFlutterViewController::makeBackgroundTransparent() {
  controller_.backgroundColor = NSColor.clearColor;
  NSView* view = controller_.view;
  view.wantsLayer = YES;
  view.layer.backgroundColor = NSColor.clearColor.CGColor;
}

Rect MacFlutterViewController::viewBounds() const {
  return rectOf(controller_.view.bounds);
}

void MacFlutterViewController::setViewAlpha(double alpha) {
  controller_.view.alphaValue = alpha;
}

std::shared_ptr<VisualEffectView> MacFlutterViewController::addVisualEffectView() {
  return std::make_shared<MacVisualEffectView>(controller_.view);
}

}  // namespace zephyx
