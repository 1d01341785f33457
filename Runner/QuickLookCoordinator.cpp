#include "Runner/QuickLookCoordinator.h"

#include "Platform/Dispatch.h"
#include "Platform/NotificationCenter.h"
#include "Platform/Platform.h"
#include "Platform/Window.h"
#include "Runner/SharedObjects.h"

namespace zephyx {
namespace {
constexpr int previewLevel = windowLevel::status + 1;
}

QuickLookCoordinator& QuickLookCoordinator::shared() {
  return SharedObjects::current().get<QuickLookCoordinator>();
}

QuickLookCoordinator::QuickLookCoordinator(Platform& platform)
    : panel_(platform.previewPanel()),
      notificationCenter_(platform.defaultNotificationCenter()),
      mainQueue_(platform.dispatch().mainQueue()) {}

QuickLookCoordinator::~QuickLookCoordinator() {
  panel_.setController(nullptr);
}

void QuickLookCoordinator::present(const std::string& url) {
  currentUrl_ = url;
  panel_.setController(this);
  panel_.setLevel(previewLevel);
  if (!closeObserver_) {
    closeObserver_ =
        notificationCenter_.addObserver(notification::windowWillClose, panel_.notificationObject(),
                                        lifetime_.wrap([this] { panelWillClose(); }));
  }
  if (panel_.isVisible()) {
    panel_.reloadData();
  } else {
    panel_.makeKeyAndOrderFront();
  }
  // Coming on screen the panel returns to a level of its own, at once or a turn later.
  panel_.setLevel(previewLevel);
  mainQueue_.async(lifetime_.wrap([this] { panel_.setLevel(previewLevel); }));
}

int QuickLookCoordinator::numberOfPreviewItems() {
  return currentUrl_ ? 1 : 0;
}

std::optional<std::string> QuickLookCoordinator::previewItemAt(int) {
  return currentUrl_;
}

bool QuickLookCoordinator::handleEvent(const Event& event) {
  if (event.type != EventType::keyDown) return false;
  if (event.keyCode != keyCode::escape && event.keyCode != keyCode::space) return false;
  panel_.orderOut();
  panelWillClose();  // ordering out posts no will-close notification
  return true;
}

void QuickLookCoordinator::panelWillClose() {
  if (onPanelClosed) onPanelClosed();
}

}  // namespace zephyx
