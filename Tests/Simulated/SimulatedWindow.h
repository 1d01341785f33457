#pragma once

#include "Platform/Events.h"
#include "Platform/View.h"
#include "Platform/Window.h"
#include "Tests/Simulated/SimulatedApplication.h"
#include "Tests/Simulated/SimulatedViewController.h"

namespace zephyx {

class SimulatedWindow final : public Window {
 public:
  SimulatedWindow(WindowConfiguration configuration, SimulatedApplication& application,
                  const Screens& screens)
      : Window(std::move(configuration)),
        application_(application),
        screens_(screens),
        frame_(this->configuration().contentRect) {}
  ~SimulatedWindow() override { application_.windowIsGone(*this); }

  Rect frame() const override { return frame_; }
  void setFrame(Rect frame) override {
    frame_ = frame;
    if (content_) content_->setSize(frame.size);
    if (contentView_) contentView_->setFrame({{0, 0}, frame.size});
  }
  void center() override {
    const auto index = screens_.mainScreenIndex();
    if (index < 0) return;
    const auto area = screens_.screens().at(static_cast<std::size_t>(index)).visibleFrame;
    frame_.origin = {area.midX() - frame_.size.width / 2, area.midY() - frame_.size.height / 2};
  }
  bool isVisible() const override { return isVisible_; }
  bool isKeyWindow() const override { return application_.keyWindow().get() == this; }
  void makeKeyAndOrderFront() override {
    orderFrontRegardless();
    application_.windowWantsKey(*this);
  }
  void orderFrontRegardless() override {
    isVisible_ = true;
    frontOrder_ = application_.nextFrontOrder();
  }
  void orderOut() override {
    isVisible_ = false;
    application_.windowIsGone(*this);
  }
  void setContentViewController(std::shared_ptr<FlutterViewController> controller) override {
    contentView_.reset();
    if (content_) content_->setInWindow(false);
    content_ = std::dynamic_pointer_cast<SimulatedViewController>(controller);
    contentIsFirstResponder_ = false;
    if (!content_) return;
    content_->setInWindow(true);
    content_->setSize(frame_.size);
  }
  void setContentView(std::shared_ptr<View> view) override {
    setContentViewController(nullptr);
    contentView_ = std::move(view);
    if (contentView_) contentView_->setFrame({{0, 0}, frame_.size});
  }
  void makeContentFirstResponder() override { contentIsFirstResponder_ = content_ || contentView_; }
  std::string firstResponderDescription() const override {
    return contentIsFirstResponder_ ? "<SimulatedView>" : "nil";
  }

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
