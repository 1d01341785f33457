#pragma once

#import <Sparkle/Sparkle.h>

#include "Platform/SoftwareUpdate.h"

@class ZephyxUpdaterDelegate;

namespace zephyx {

/// Sparkle's standard updater, with the feed, the key and the schedule of the bundle.
class MacSoftwareUpdate final : public SoftwareUpdate {
 public:
  std::optional<std::string> unavailableReason() const override;
  Registration start(SoftwareUpdateDelegate& delegate) override;
  void checkForUpdates() override;

 private:
  ZephyxUpdaterDelegate* delegate_;  // the controller does not keep it
  SPUStandardUpdaterController* controller_;
};

}  // namespace zephyx
