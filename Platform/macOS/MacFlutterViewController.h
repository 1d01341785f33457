#pragma once

#import <FlutterMacOS/FlutterMacOS.h>

#include "Platform/FlutterEngine.h"

namespace zephyx {

class MacFlutterEngine;

class MacFlutterViewController final : public FlutterViewController {
 public:
  /// `engine` is the one that `controller` shows.
  MacFlutterViewController(::FlutterViewController* controller,
                           std::shared_ptr<MacFlutterEngine> engine);

  std::shared_ptr<FlutterEngine> engine() const override;
  void makeBackgroundTransparent() override;
  Rect viewBounds() const override;
  void setViewAlpha(double alpha) override;
  std::shared_ptr<VisualEffectView> addVisualEffectView() override;

  ::FlutterViewController* controller() const { return controller_; }

 private:
  std::shared_ptr<MacFlutterEngine> engine_;
  ::FlutterViewController* controller_;  ///< goes before its engine
};

}  // namespace zephyx
