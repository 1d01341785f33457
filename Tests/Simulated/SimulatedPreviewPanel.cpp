#include "Tests/Simulated/SimulatedPreviewPanel.h"

#include "Platform/LocalNotificationCenter.h"
#include "Tests/Simulated/SimulatedApplication.h"

namespace zephyx {

void SimulatedPreviewPanel::reloadData() {
  shownItem_.reset();
  if (controller_ && controller_->numberOfPreviewItems() > 0) {
    shownItem_ = controller_->previewItemAt(0);
  }
}

void SimulatedPreviewPanel::makeKeyAndOrderFront() {
  if (!isVisible_) ++openings_;
  isVisible_ = true;
  reloadData();
  application_.takeKeyboardAway();
}

void SimulatedPreviewPanel::closeByUser() {
  isVisible_ = false;
  notificationCenter_.post(notification::windowWillClose, notificationObject());
}

bool SimulatedPreviewPanel::receive(const Event& event) {
  return isVisible_ && controller_ && controller_->handleEvent(event);
}

}  // namespace zephyx
