#include "Platform/Linux/Preview/LinuxPreviewPanel.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QKeyEvent>
#include <QtGui/QScreen>
#include <QtGui/QWindow>
#include <chrono>
#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Linux/Input/ToolkitEventTranslation.h"
#include "Platform/Linux/Preview/PreviewContent.h"
#include "Platform/Linux/Preview/PreviewWindow.h"
#include "Platform/Linux/Windows/DesktopWatch.h"
#include "Platform/Linux/Windows/ScreenGeometry.h"
#include "Platform/Linux/Windows/WindowHints.h"
#include "Platform/LocalNotificationCenter.h"
#include "Platform/Window.h"

namespace zephyx {
namespace {

/// Nobody may take the keyboard.
constexpr std::chrono::milliseconds longestLeave{200};

PreviewWindow::Place placeUnderPointer(DesktopWatch& watch) {
  const QScreen* screen = screenUnderPointer();
  if (!screen) return {QRect(0, 0, 800, 600), 1};
  return {availableGeometry(watch, *screen), screen->devicePixelRatio()};
}

}  // namespace

LinuxPreviewPanel::LinuxPreviewPanel(Dispatch& dispatch, LocalNotificationCenter& center,
                                     WindowHints& hints, DesktopWatch& watch)
    : dispatch_(dispatch), center_(center), hints_(hints), watch_(watch) {
  leaving_.setSingleShot(true);
  leaving_.setInterval(longestLeave);
}

LinuxPreviewPanel::~LinuxPreviewPanel() = default;

void LinuxPreviewPanel::setLevel(int level) {
  if (level == level_) return;
  level_ = level;
  if (!isVisible()) return;
  hints_.setState(*window_->windowHandle(), "_NET_WM_STATE_ABOVE", level > windowLevel::normal);
}

bool LinuxPreviewPanel::isVisible() const {
  return window_ && window_->isVisible() && !leaving_.isActive();
}

void LinuxPreviewPanel::ensureWindow() {
  if (window_) return;
  window_ = std::make_unique<PreviewWindow>();
  window_->onKeyPress = [this](const QKeyEvent& press) { return keyPressed(press); };
  window_->onClose = [this] { closedByUser(); };
  leaving_.callOnTimeout(window_.get(), [this] { hide(); });
  QObject::connect(qGuiApp, &QGuiApplication::focusWindowChanged, window_.get(), [this] {
    if (leaving_.isActive() && !window_->isActiveWindow()) hide();
  });
}

void LinuxPreviewPanel::reloadData() {
  ensureWindow();
  const auto load = ++load_;
  const auto item = controller_ && controller_->numberOfPreviewItems() > 0
                        ? controller_->previewItemAt(0)
                        : std::nullopt;
  if (!item) return show({});
  const QSize limit = PreviewWindow::pictureLimit(placeUnderPointer(watch_));
  if (PreviewContent::isQuick(*item)) return show(PreviewContent::ofFile(*item, limit));

  auto show = lifetime_.wrap([this, load](const PreviewContent& content) {
    if (load == load_) this->show(content);
  });
  dispatch_.globalQueue().async([&main = dispatch_.mainQueue(), show, item = *item, limit] {
    main.async([show, content = PreviewContent::ofFile(item, limit)]() mutable { show(content); });
  });
}

void LinuxPreviewPanel::show(const PreviewContent& content) {
  window_->setContent(content, placeUnderPointer(watch_));
}

void LinuxPreviewPanel::makeKeyAndOrderFront() {
  if (!isVisible()) {
    hide();
    reloadData();
    window_->setRounded(watch_.composited());
    // Above the window that it was opened from, whatever is clicked.
    auto* opener = QGuiApplication::focusWindow();
    window_->winId();
    auto* handle = window_->windowHandle();
    handle->setTransientParent(opener == handle ? nullptr : opener);
    hints_.prepareToMap(
        *handle, {"_NET_WM_STATE_ABOVE", "_NET_WM_STATE_SKIP_TASKBAR", "_NET_WM_STATE_SKIP_PAGER"});
    window_->show();
    hints_.setState(*handle, "_NET_WM_STATE_ABOVE", level_ > windowLevel::normal);
  }
  window_->raise();
  window_->setFocus();
  hints_.activate(*window_->windowHandle());
}

// A window manager that loses the window with the keyboard hands the keyboard to one of its own
// choice, never to a panel: the opener gets it first.
void LinuxPreviewPanel::orderOut() {
  if (!isVisible()) return;
  if (!window_->isActiveWindow()) return hide();
  leaving_.start();
}

void LinuxPreviewPanel::hide() {
  leaving_.stop();
  if (window_) window_->hide();
}

bool LinuxPreviewPanel::keyPressed(const QKeyEvent& press) {
  const auto event = hostEvent(press);
  return event && controller_ && controller_->handleEvent(*event);
}

void LinuxPreviewPanel::closedByUser() {
  center_.post(notification::windowWillClose, notificationObject());
  orderOut();
}

}  // namespace zephyx
