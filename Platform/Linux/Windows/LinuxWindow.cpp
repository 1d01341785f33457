#include "Platform/Linux/Windows/LinuxWindow.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtQuick/QQuickItem>
#include <utility>

#include "Platform/Linux/Engines/LinuxFlutterViewController.h"
#include "Platform/Linux/Windows/Coordinates.h"
#include "Platform/Linux/Windows/HostWindow.h"
#include "Platform/Linux/Windows/KeyWindowTracker.h"
#include "Platform/Linux/Windows/ScreenGeometry.h"
#include "Platform/Linux/Windows/WindowHints.h"
#include "Platform/Linux/Workspace/DesktopWatch.h"

namespace zephyx {
namespace {

constexpr QRgb opaqueBackground = 0xff131316;

QSize pixelSize(Size size) {
  return {qRound(size.width), qRound(size.height)};
}

}  // namespace

LinuxWindow::LinuxWindow(WindowConfiguration configuration, WindowHints& hints,
                         KeyWindowTracker& keyTracker, DesktopWatch& watch)
    : Window(std::move(configuration)),
      hints_(hints),
      keyTracker_(keyTracker),
      watch_(watch),
      geometry_(coordinates::fromHost(this->configuration().contentRect)) {
  keyTracker_.add(this);
}

LinuxWindow::~LinuxWindow() {
  keyTracker_.remove(this);
  setContentViewController(nullptr);
}

Rect LinuxWindow::frame() const {
  return coordinates::toHost(geometry_);
}

void LinuxWindow::setFrame(Rect frame) {
  geometry_ = coordinates::fromHost(frame);
  if (window_) window_->setGeometry(geometry_);
  resizeContent();
}

void LinuxWindow::center() {
  const QScreen* screen = QGuiApplication::screenAt(geometry_.center());
  if (!screen) screen = QGuiApplication::primaryScreen();
  if (!screen) return;
  const QRect available = availableGeometry(watch_, *screen);
  geometry_.moveTo(available.left() + (available.width() - geometry_.width()) / 2,
                   available.top() + (available.height() - geometry_.height()) / 2);
  if (window_) window_->setGeometry(geometry_);
}

bool LinuxWindow::isVisible() const {
  return window_ && window_->isVisible();
}

bool LinuxWindow::isKeyWindow() const {
  return keyTracker_.keyWindow() == this;
}

void LinuxWindow::makeKeyAndOrderFront() {
  show(true);
  if (configuration().canBecomeKey) activate();
}

void LinuxWindow::orderFrontRegardless() {
  show(false);
}

void LinuxWindow::orderOut() {
  if (!isVisible()) return;
  window_->hide();
  keyTracker_.windowWasOrderedOut(this);
}

void LinuxWindow::activate() {
  if (isVisible()) hints_.activate(*window_);
}

void LinuxWindow::keepAbove(QWindow& dialog) {
  if (window_) dialog.setTransientParent(window_.get());
}

void LinuxWindow::show(bool activating) {
  // The visual of a window is for life; a compositor that came or went wants another.
  if (window_ && !window_->isVisible() && isSeeThrough() != hasSeeThroughVisual_) {
    if (content_) content_->view().setParentItem(nullptr);
    window_.reset();
  }
  ensureWindow();
  attachContent();
  window_->setProperty("_q_showWithoutActivating", !activating);
  if (window_->isVisible()) {
    if (configuration().collectionBehavior & collectionBehavior::moveToActiveSpace) {
      hints_.moveToCurrentDesktop(*window_);
    }
  } else {
    window_->create();
    hints_.prepareToMap(*window_, states());
    window_->show();
    // A window manager that is still withdrawing the window forgets what the property said.
    for (const auto& state : states()) hints_.setState(*window_, state, true);
    wasAbove_ = isAbove();
  }
  window_->raise();
}

void LinuxWindow::ensureWindow() {
  if (window_) return;
  window_ = std::make_unique<HostWindow>();
  Qt::WindowFlags flags = Qt::FramelessWindowHint;
  flags |= configuration().kind == WindowKind::panel ? Qt::Tool : Qt::Window;
  if (!configuration().canBecomeKey) flags |= Qt::WindowDoesNotAcceptFocus;
  window_->setFlags(flags);
  window_->onCloseRequest = [this] { orderOut(); };
  applyConfiguration();
  applyBackground();
  hasSeeThroughVisual_ = isSeeThrough();
  window_->setGeometry(geometry_);

  auto* window = window_.get();
  const auto follow = [this] { followWindow(); };
  QObject::connect(window, &QWindow::xChanged, window, follow);
  QObject::connect(window, &QWindow::yChanged, window, follow);
  QObject::connect(window, &QWindow::widthChanged, window, follow);
  QObject::connect(window, &QWindow::heightChanged, window, follow);
  QObject::connect(&watch_, &DesktopWatch::compositedChanged, window, [this] {
    if (isVisible()) applyBackground();
  });
}

void LinuxWindow::followWindow() {
  if (!window_->isVisible()) return;
  geometry_ = window_->geometry();
  resizeContent();
}

void LinuxWindow::setContentViewController(std::shared_ptr<FlutterViewController> controller) {
  if (content_) content_->view().setParentItem(nullptr);
  content_ = std::dynamic_pointer_cast<LinuxFlutterViewController>(std::move(controller));
  resizeContent();
  if (isVisible()) attachContent();
}

void LinuxWindow::attachContent() {
  if (!content_) return;
  content_->loadView();
  content_->view().setParentItem(window_->contentItem());
}

void LinuxWindow::resizeContent() {
  if (content_) content_->setViewSize(geometry_.size());
}

void LinuxWindow::makeContentFirstResponder() {
  if (content_) content_->takeFocus();
}

std::string LinuxWindow::firstResponderDescription() const {
  // What the keyboard goes to once the window has it, which takes the window manager a moment.
  const auto* item = window_ ? window_->contentItem()->scopedFocusItem() : nullptr;
  while (item && item->isFocusScope() && item->scopedFocusItem()) item = item->scopedFocusItem();
  if (!item) return "nil";
  return std::string("<") + item->metaObject()->className() + ">";
}

unsigned int LinuxWindow::nativeId() const {
  return window_ && window_->handle() ? static_cast<unsigned int>(window_->winId()) : 0;
}

void LinuxWindow::applyConfiguration() {
  if (!window_) return;
  const auto& wanted = configuration();
  window_->setTitle(QString::fromStdString(wanted.title));
  window_->setMinimumSize(pixelSize(wanted.minimumSize));
  window_->setMovableByBackground(wanted.movableByWindowBackground);
  window_->setResizable(wanted.styleMask & styleMask::resizable);
  if (window_->opacity() != wanted.alpha) window_->setOpacity(wanted.alpha);
  if (isVisible() && wasAbove_ != isAbove()) {
    wasAbove_ = isAbove();
    hints_.setState(*window_, "_NET_WM_STATE_ABOVE", wasAbove_);
  }
}

void LinuxWindow::applyBackground() {
  window_->setColor(isSeeThrough() ? QColor(Qt::transparent) : QColor::fromRgba(opaqueBackground));
}

bool LinuxWindow::isSeeThrough() const {
  return configuration().transparentBackground && watch_.composited() &&
         (!content_ || content_->hasTransparentBackground());
}

std::vector<std::string> LinuxWindow::states() const {
  std::vector<std::string> names;
  if (isAbove()) names.emplace_back("_NET_WM_STATE_ABOVE");
  const auto behavior = configuration().collectionBehavior;
  if (configuration().kind == WindowKind::panel ||
      (behavior & (collectionBehavior::transient | collectionBehavior::ignoresCycle))) {
    names.emplace_back("_NET_WM_STATE_SKIP_TASKBAR");
    names.emplace_back("_NET_WM_STATE_SKIP_PAGER");
  }
  return names;
}

}  // namespace zephyx
