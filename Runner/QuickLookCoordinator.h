#pragma once

#include <functional>
#include <optional>
#include <string>

#include "Platform/LifetimeGuard.h"
#include "Platform/QuickLook.h"
#include "Platform/Registration.h"

namespace zephyx {

class DispatchQueue;
class NotificationCenter;
class Platform;

/// Shows one file in the system's preview panel, above the host's floating panels, and tells its
/// caller when the preview closes. Main thread.
class QuickLookCoordinator final : public PreviewPanelController {
 public:
  static QuickLookCoordinator& shared();
  explicit QuickLookCoordinator(Platform& platform);
  ~QuickLookCoordinator() override;

  /// Called whenever the preview closes.
  std::function<void()> onPanelClosed;

  /// Shows a file URL; while the preview is visible it changes to the new file.
  void present(const std::string& url);

  int numberOfPreviewItems() override;
  std::optional<std::string> previewItemAt(int index) override;
  bool handleEvent(const Event& event) override;

 private:
  void panelWillClose();

  PreviewPanel& panel_;
  NotificationCenter& notificationCenter_;
  DispatchQueue& mainQueue_;
  std::optional<std::string> currentUrl_;
  Registration closeObserver_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
