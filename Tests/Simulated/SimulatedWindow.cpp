#include "Tests/Simulated/SimulatedWindow.h"

#include "Platform/View.h"
#include "Tests/Simulated/SimulatedApplication.h"
#include "Tests/Simulated/SimulatedViewController.h"

namespace zephyx {

SimulatedWindow::SimulatedWindow(WindowConfiguration configuration,
                                 SimulatedApplication& application, const Screens& screens)
    : Window(std::move(configuration)),
      application_(application),
      screens_(screens),
      frame_(this->configuration().contentRect) {}

SimulatedWindow::~SimulatedWindow() {
  application_.windowIsGone(*this);
}

void SimulatedWindow::setFrame(Rect frame) {
  frame_ = frame;
  if (content_) content_->setSize(frame.size);
  if (contentView_) contentView_->setFrame({{0, 0}, frame.size});
}

void SimulatedWindow::center() {
  const auto index = screens_.mainScreenIndex();
  if (index < 0) return;
  const auto area = screens_.screens().at(static_cast<std::size_t>(index)).visibleFrame;
  frame_.origin = {area.midX() - frame_.size.width / 2, area.midY() - frame_.size.height / 2};
}

bool SimulatedWindow::isKeyWindow() const {
  return application_.keyWindow().get() == this;
}

void SimulatedWindow::makeKeyAndOrderFront() {
  orderFrontRegardless();
  application_.windowWantsKey(*this);
}

void SimulatedWindow::orderFrontRegardless() {
  isVisible_ = true;
  frontOrder_ = application_.nextFrontOrder();
}

void SimulatedWindow::orderOut() {
  isVisible_ = false;
  application_.windowIsGone(*this);
}

void SimulatedWindow::setContentViewController(std::shared_ptr<FlutterViewController> controller) {
  contentView_.reset();
  if (content_) content_->setInWindow(false);
  content_ = std::dynamic_pointer_cast<SimulatedViewController>(controller);
  contentIsFirstResponder_ = false;
  if (!content_) return;
  content_->setInWindow(true);
  content_->setSize(frame_.size);
}

void SimulatedWindow::setContentView(std::shared_ptr<View> view) {
  setContentViewController(nullptr);
  contentView_ = std::move(view);
  if (contentView_) contentView_->setFrame({{0, 0}, frame_.size});
}

void SimulatedWindow::makeContentFirstResponder() {
  contentIsFirstResponder_ = content_ || contentView_;
}

std::string SimulatedWindow::firstResponderDescription() const {
  return contentIsFirstResponder_ ? "<SimulatedView>" : "nil";
}

}  // namespace zephyx
