#pragma once

#include <optional>
#include <string>

#include "Platform/Events.h"

namespace zephyx {

/// Supplies and steers the shared preview panel. Main thread.
class PreviewPanelController {
 public:
  virtual ~PreviewPanelController() = default;
  virtual int numberOfPreviewItems() = 0;
  /// A file URL; nothing when there is no item.
  virtual std::optional<std::string> previewItemAt(int index) = 0;
  /// True when the event is dealt with and goes no further.
  virtual bool handleEvent(const Event& event) = 0;
};

/// The system's one preview panel. Main thread. Posts `notification::windowWillClose` when the user
/// closes it by its own control, not when it is ordered out.
class PreviewPanel {
 public:
  virtual ~PreviewPanel() = default;
  /// Data source and delegate in one; not owned, null to take it away.
  virtual void setController(PreviewPanelController* controller) = 0;
  virtual void setLevel(int level) = 0;
  virtual bool isVisible() const = 0;
  /// Asks the controller for its item again.
  virtual void reloadData() = 0;
  virtual void makeKeyAndOrderFront() = 0;
  virtual void orderOut() = 0;
  virtual const void* notificationObject() const { return this; }
};

}  // namespace zephyx
