#pragma once

#include "Platform/LocalNotificationCenter.h"
#include "Platform/QuickLook.h"
#include "Tests/Simulated/SimulatedApplication.h"

namespace zephyx {

class SimulatedPreviewPanel final : public PreviewPanel {
 public:
  SimulatedPreviewPanel(SimulatedApplication& application,
                        LocalNotificationCenter& notificationCenter)
      : application_(application), notificationCenter_(notificationCenter) {}

  void setController(PreviewPanelController* controller) override { controller_ = controller; }
  void setLevel(int level) override { levels_.push_back(level); }
  bool isVisible() const override { return isVisible_; }
  void reloadData() override {
    shownItem_.reset();
    if (controller_ && controller_->numberOfPreviewItems() > 0) {
      shownItem_ = controller_->previewItemAt(0);
    }
  }
  void makeKeyAndOrderFront() override {
    if (!isVisible_) ++openings_;
    isVisible_ = true;
    reloadData();
    application_.takeKeyboardAway();
  }
  void orderOut() override { isVisible_ = false; }

  /// The user closes it by its own control.
  void closeByUser() {
    isVisible_ = false;
    notificationCenter_.post(notification::windowWillClose, notificationObject());
  }
  /// An event that arrives while it has the keyboard; true when its controller dealt with it.
  bool receive(const Event& event) {
    return isVisible_ && controller_ && controller_->handleEvent(event);
  }
  /// The file that it shows.
  const std::optional<std::string>& shownItem() const { return shownItem_; }
  const std::vector<int>& levels() const { return levels_; }
  int openings() const { return openings_; }

 private:
  SimulatedApplication& application_;
  LocalNotificationCenter& notificationCenter_;
  PreviewPanelController* controller_ = nullptr;
  bool isVisible_ = false;
  std::optional<std::string> shownItem_;
  std::vector<int> levels_;
  int openings_ = 0;
};

}  // namespace zephyx
