#pragma once

#import <AppKit/AppKit.h>

#include "Platform/Application.h"

@class ZephyxApplicationDelegate;

namespace zephyx {

class MacWindow;

/// The host on AppKit's main loop. `run` returns, and with the objects of `main` the engines, the
/// windows and the services end in their order; last, when this object goes, the application's
/// observers hear that it terminates.
class MacApplication final : public Application {
 public:
  MacApplication();
  ~MacApplication() override;

  int run(ApplicationDelegate& delegate) override;
  ApplicationDelegate* delegate() const override { return delegate_; }
  void terminate() override;
  std::string bundleIdentifier() const override;

  std::shared_ptr<Window> makeWindow(const WindowConfiguration& configuration) override;
  std::vector<std::shared_ptr<Window>> windows() const override;
  std::shared_ptr<Window> keyWindow() const override;
  bool hasVisibleSavePanel() const override;
  bool isActive() const override;
  void activateIgnoringOtherApps() override;

 private:
  std::vector<std::shared_ptr<MacWindow>> livingWindows() const;

  ApplicationDelegate* delegate_ = nullptr;
  ZephyxApplicationDelegate* nativeDelegate_;  ///< nil before `run`
  std::vector<std::weak_ptr<MacWindow>> windows_;
};

}  // namespace zephyx
