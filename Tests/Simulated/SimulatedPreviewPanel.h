#pragma once

#include <optional>
#include <string>
#include <vector>

#include "Platform/QuickLook.h"

namespace zephyx {

class LocalNotificationCenter;
class SimulatedApplication;

class SimulatedPreviewPanel final : public PreviewPanel {
 public:
  SimulatedPreviewPanel(SimulatedApplication& application,
                        LocalNotificationCenter& notificationCenter)
      : application_(application), notificationCenter_(notificationCenter) {}

  void setController(PreviewPanelController* controller) override { controller_ = controller; }
  void setLevel(int level) override { levels_.push_back(level); }
  bool isVisible() const override { return isVisible_; }
  void reloadData() override;
  void makeKeyAndOrderFront() override;
  void orderOut() override { isVisible_ = false; }

  /// The user closes it by its own control.
  void closeByUser();
  /// An event that arrives while it has the keyboard; true when its controller dealt with it.
  bool receive(const Event& event);
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
