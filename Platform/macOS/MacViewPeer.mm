#include "Platform/macOS/MacViewPeer.h"

#import <QuartzCore/QuartzCore.h>

#include <algorithm>
#include <utility>

#include "Platform/Label.h"
#include "Platform/PushButton.h"
#include "Platform/Slider.h"
#include "Platform/Switch.h"
#include "Platform/SymbolImage.h"
#include "Platform/ViewVisitor.h"
#include "Platform/macOS/MacCanvasView.h"
#include "Platform/macOS/MacLabel.h"
#include "Platform/macOS/MacPushButton.h"
#include "Platform/macOS/MacSlider.h"
#include "Platform/macOS/MacSwitch.h"
#include "Platform/macOS/MacSymbolView.h"
#include "Platform/macOS/MacViewCoordinates.h"
#include "Platform/macOS/Strings.h"

namespace zephyx {
namespace {

/// Makes the native view for a kind of view.
class NativeViewMaker final : public ViewVisitor {
 public:
  static NSView<ZephyxNativeView>* make(const std::shared_ptr<View>& view) {
    NativeViewMaker maker(view);
    view->accept(maker);
    return maker.made_;
  }

  void visitView(View&) override { made_ = [[ZephyxCanvasView alloc] initWithView:view_]; }
  void visitLabel(Label& label) override { made_ = [ZephyxLabel labelShowing:sharing(label)]; }
  void visitPushButton(PushButton& button) override {
    made_ = [[ZephyxPushButton alloc] initWithButton:sharing(button)];
  }
  void visitSlider(Slider& slider) override {
    made_ = [[ZephyxSlider alloc] initWithSlider:sharing(slider)];
  }
  void visitSwitch(Switch& control) override {
    made_ = [[ZephyxSwitch alloc] initWithSwitch:sharing(control)];
  }
  void visitSymbolImage(SymbolImage& image) override {
    made_ = [[ZephyxSymbolView alloc] initWithImage:sharing(image)];
  }

 private:
  explicit NativeViewMaker(std::shared_ptr<View> view) : view_(std::move(view)) {}

  template <typename Kind>
  std::shared_ptr<Kind> sharing(Kind& visited) const {
    return {view_, &visited};
  }

  const std::shared_ptr<View> view_;
  NSView<ZephyxNativeView>* made_ = nil;
};

NSString* textOrNil(const std::string& text) {
  return text.empty() ? nil : nsString(text);
}

}  // namespace

MacViewPeer::MacViewPeer(std::shared_ptr<View> view, const MacViewPeer* parent)
    : view_(std::move(view)), parent_(parent), native_(NativeViewMaker::make(view_)) {
  registration_ = view_->attachPeer(*this);
  if (parent_) {
    native_.userInterfaceLayoutDirection = parent_->native_.userInterfaceLayoutDirection;
  }
  propertiesDidChange();
  alphaDidChange(std::nullopt);
  childrenDidChange();
}

MacViewPeer::~MacViewPeer() {
  registration_.reset();
  children_.clear();
  [native_ removeFromSuperview];
  // The native view may be what is calling: it goes when the event has been handled.
  CFAutorelease((__bridge_retained CFTypeRef)native_);
}

void MacViewPeer::place() {
  if (!parent_) return;
  const MacViewCoordinates coordinates(parent_->view_->bounds().size,
                                       MacViewCoordinates::isMirrored(parent_->native_));
  native_.frame = [native_ nativeFrameForFrame:coordinates.fromHost(view_->frame())];
}

void MacViewPeer::setLayoutDirection(NSUserInterfaceLayoutDirection direction) {
  native_.userInterfaceLayoutDirection = direction;
  showView();
  native_.needsDisplay = YES;
  for (const auto& child : children_) child->setLayoutDirection(direction);
}

void MacViewPeer::frameDidChange() {
  if (!parent_) {
    if (onFrameChange) onFrameChange();
  } else {
    place();
  }
  // In a mirror their places depend on the width here.
  for (const auto& child : children_) child->place();
}

void MacViewPeer::childrenDidChange() {
  std::vector<std::shared_ptr<MacViewPeer>> kept;
  NSMutableArray<NSView*>* natives = [NSMutableArray array];
  for (const auto& view : view_->children()) {
    const auto found = std::find_if(children_.begin(), children_.end(),
                                    [&](const auto& each) { return each && each->view_ == view; });
    if (found != children_.end()) {
      kept.push_back(std::move(*found));
    } else {
      kept.push_back(std::make_shared<MacViewPeer>(view, this));
    }
    [natives addObject:kept.back()->native_];
  }
  std::swap(children_, kept);
  // Those that are left over take their native views away.
  kept.clear();
  if (![native_.subviews isEqualToArray:natives]) native_.subviews = natives;
  for (const auto& child : children_) child->place();
}

void MacViewPeer::showView() {
  [native_.effectiveAppearance performAsCurrentDrawingAppearance:^{
    [native_ showView];
  }];
  // A label's own height depends on its font.
  place();
}

void MacViewPeer::propertiesDidChange() {
  native_.toolTip = textOrNil(view_->toolTip());
  native_.accessibilityLabel = textOrNil(view_->accessibilityLabel());
  native_.hidden = view_->isHidden();
  showView();
}

void MacViewPeer::alphaDidChange(const std::optional<Animation>& animation) {
  const double alpha = std::clamp(view_->alpha(), 0.0, 1.0);
  if (!animation && native_.alphaValue == alpha && !native_.window) return;
  NSView* native = native_;
  [NSAnimationContext runAnimationGroup:^(NSAnimationContext* context) {
    // A change without duration replaces an animation that still runs, too.
    context.duration = animation ? animation->seconds : 0;
    context.timingFunction = [CAMediaTimingFunction
        functionWithName:animation && animation->timing == Animation::Timing::easeInEaseOut
                             ? kCAMediaTimingFunctionEaseInEaseOut
                             : kCAMediaTimingFunctionLinear];
    native.animator.alphaValue = alpha;
  }];
}

void MacViewPeer::setNeedsDisplay() {
  native_.needsDisplay = YES;
}

void MacViewPeer::appearanceDidChange() {
  view_->appearanceDidChange();
  showView();
  native_.needsDisplay = YES;
  for (const auto& child : std::vector(children_)) child->appearanceDidChange();
}

}  // namespace zephyx
