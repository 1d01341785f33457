#include "Platform/Linux/Alerts/LinuxAlerts.h"

#include <QtGui/QWindow>
#include <algorithm>
#include <utility>

#include "Platform/Linux/Alerts/AlertWindow.h"
#include "Platform/Linux/Windows/DesktopWatch.h"
#include "Platform/Linux/Windows/ScreenGeometry.h"
#include "Platform/Linux/Windows/WindowHints.h"

namespace zephyx {

LinuxAlerts::LinuxAlerts(WindowHints& hints, DesktopWatch& watch) : hints_(hints), watch_(watch) {}

LinuxAlerts::~LinuxAlerts() = default;

void LinuxAlerts::show(const Alert& alert, std::function<void(std::size_t)> completion) {
  auto& window = *windows_.emplace_back(std::make_unique<AlertWindow>(alert, watch_.composited()));
  QObject::connect(&window, &QDialog::finished, &window,
                   [this, &window, completion = std::move(completion)](int button) {
                     const auto answer = completion;
                     forget(window);
                     answer(static_cast<std::size_t>(button));
                   });
  window.adjustSize();
  if (const QScreen* screen = screenUnderPointer()) {
    const QRect available = availableGeometry(watch_, *screen);
    // A third of what is free lies above it.
    window.move(available.x() + (available.width() - window.width()) / 2,
                available.y() + (available.height() - window.height()) / 3);
  }
  window.winId();
  auto& handle = *window.windowHandle();
  hints_.prepareToMap(
      handle, {"_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"});
  window.show();
  hints_.activate(handle);
}

void LinuxAlerts::forget(const AlertWindow& window) {
  const auto found = std::find_if(windows_.begin(), windows_.end(),
                                  [&](const auto& each) { return each.get() == &window; });
  if (found == windows_.end()) return;
  // It is what is calling.
  found->release()->deleteLater();
  windows_.erase(found);
}

}  // namespace zephyx
