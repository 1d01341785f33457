#pragma once

#include <memory>
#include <vector>

#include "Platform/Events.h"
#include "Platform/Window.h"

namespace zephyx {

class SimulatedApplication;
class SimulatedViewController;

class SimulatedWindow final : public Window {
 public:
  SimulatedWindow(WindowConfiguration configuration, SimulatedApplication& application,
                  const Screens& screens);
  ~SimulatedWindow() override;

  Rect frame() const override { return frame_; }
  void setFrame(Rect frame) override;
  void center() override;
  bool isVisible() const override { return isVisible_; }
  bool isKeyWindow() const override;
  void makeKeyAndOrderFront() override;
  void orderFrontRegardless() override;
  void orderOut() override;
  void setContentViewController(std::shared_ptr<FlutterViewController> controller) override;
  void setContentView(std::shared_ptr<View> view) override;
  void makeContentFirstResponder() override;
  std::string firstResponderDescription() const override;

  /// Keys that reached the window.
  std::vector<Event> receivedKeys;
  /// Grows each time that the window comes to the front.
  std::uint64_t frontOrder() const { return frontOrder_; }
  const std::shared_ptr<SimulatedViewController>& content() const { return content_; }
  const std::shared_ptr<View>& contentView() const { return contentView_; }

 protected:
  void applyConfiguration() override {}

 private:
  SimulatedApplication& application_;
  const Screens& screens_;
  Rect frame_;
  bool isVisible_ = false;
  bool contentIsFirstResponder_ = false;
  std::uint64_t frontOrder_ = 0;
  std::shared_ptr<SimulatedViewController> content_;
  std::shared_ptr<View> contentView_;
};

}  // namespace zephyx
