#pragma once

#import <AppKit/AppKit.h>

#include <memory>
#include <string>

#include "Platform/Workspace.h"

namespace zephyx {

/// An application of the workspace. What changes with time is as of the main run loop's latest
/// turn.
class MacRunningApplication final : public RunningApplication {
 public:
  explicit MacRunningApplication(NSRunningApplication* application);

  std::string bundleIdentifier() const override;
  std::string localizedName() const override;
  std::shared_ptr<Image> icon() const override;
  bool isActive() const override;
  bool activateIgnoringOtherApps() override;
  bool activateCooperatively() override;

 private:
  NSRunningApplication* application_;
};

}  // namespace zephyx
