#pragma once

#import <AppKit/AppKit.h>

#include "Platform/FlutterEngine.h"

namespace zephyx {

class MacVisualEffectView final : public VisualEffectView {
 public:
  /// Hidden, beneath everything else in `host`, which keeps it.
  explicit MacVisualEffectView(NSView* host);

  void setFrame(Rect frame) override;
  void setCornerRadius(double radius) override;
  void setHidden(bool hidden) override;

 private:
  NSVisualEffectView* view_;
};

}  // namespace zephyx
