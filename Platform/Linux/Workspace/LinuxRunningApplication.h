#pragma once

#include <QtCore/QString>
#include <memory>

#include "Platform/Linux/Workspace/WindowServer.h"
#include "Platform/Workspace.h"

namespace zephyx {

/// A process, and the window in which it was met unless it was met by its process alone.
class LinuxRunningApplication : public RunningApplication {
 public:
  struct Description {
    WindowServer::WindowOfProcess target;  ///< what is activated
    xcb_window_t iconWindow = XCB_NONE;    ///< may carry the program's icon
    std::string bundleIdentifier;
    std::string localizedName;
    QString themeIcon;
  };

  LinuxRunningApplication(std::shared_ptr<WindowServer> windows, Description description);

  std::string bundleIdentifier() const override { return description_.bundleIdentifier; }
  std::string localizedName() const override { return description_.localizedName; }
  std::shared_ptr<Image> icon() const override;
  bool isActive() const override;
  bool activateIgnoringOtherApps() override;
  bool activateCooperatively() override { return activateIgnoringOtherApps(); }

 private:
  std::shared_ptr<WindowServer> windows_;
  Description description_;
};

}  // namespace zephyx
