#pragma once

#import <AppKit/AppKit.h>

#include "Platform/Window.h"

namespace zephyx {

class MacFlutterViewController;

/// A private subclass of NSWindow or NSPanel. Closing it, by whatever means, only orders it out.
class MacWindow final : public Window {
 public:
  explicit MacWindow(const WindowConfiguration& configuration);
  ~MacWindow() override;

  Rect frame() const override;
  void setFrame(Rect frame) override;
  void center() override;

  bool isVisible() const override;
  bool isKeyWindow() const override;
  void makeKeyAndOrderFront() override;
  void orderFrontRegardless() override;
  void orderOut() override;

  void setContentViewController(std::shared_ptr<FlutterViewController> controller) override;
  void setContentView(std::shared_ptr<View> view) override;
  void makeContentFirstResponder() override;
  std::string firstResponderDescription() const override;

  const void* notificationObject() const override { return (__bridge const void*)window_; }

  NSWindow* window() const { return window_; }

 private:
  void applyConfiguration() override;
  void applyBackground();
  void applyPanelProperties();

  NSWindow* window_;
  std::shared_ptr<MacFlutterViewController> content_;
};

}  // namespace zephyx
