#pragma once

#import <AppKit/AppKit.h>

#include <functional>
#include <memory>
#include <vector>

#include "Platform/View.h"
#include "Platform/macOS/MacNativeView.h"

namespace zephyx {

/// Shows a view and all that is in it with native views, and follows its changes. Main thread.
class MacViewPeer final : public ViewPeer {
 public:
  /// Null as a parent makes a root, which is placed by what holds it.
  MacViewPeer(std::shared_ptr<View> view, const MacViewPeer* parent);
  ~MacViewPeer() override;

  NSView<ZephyxNativeView>* native() const { return native_; }
  /// Of this view and all in it; native views do not take it from each other.
  void setLayoutDirection(NSUserInterfaceLayoutDirection direction);
  /// Tells this view and all in it that colours have changed.
  void appearanceDidChange();

  /// Of the root: the view's frame changed, which only what holds the root can show.
  std::function<void()> onFrameChange;

  void frameDidChange() override;
  void childrenDidChange() override;
  void propertiesDidChange() override;
  void alphaDidChange(const std::optional<Animation>& animation) override;
  void setNeedsDisplay() override;

 private:
  void place();
  void showView();

  const std::shared_ptr<View> view_;
  const MacViewPeer* const parent_;
  NSView<ZephyxNativeView>* const native_;
  std::vector<std::shared_ptr<MacViewPeer>> children_;
  Registration registration_;
};

}  // namespace zephyx
