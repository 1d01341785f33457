#include "Platform/Linux/Windows/LinuxWindow.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QScreen>
#include <QtQuick/QQuickItem>
#include <utility>

#include "Platform/Linux/Engines/LinuxFlutterViewController.h"
#include "Platform/Linux/Views/ViewWindow.h"
#include "Platform/Linux/Windows/Coordinates.h"
#include "Platform/Linux/Windows/DesktopWatch.h"
#include "Platform/Linux/Windows/HostWindow.h"
#include "Platform/Linux/Windows/KeyWindowTracker.h"
#include "Platform/Linux/Windows/ScreenGeometry.h"
#include "Platform/Linux/Windows/WindowHints.h"

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
  discardWindow();
}

Rect LinuxWindow::frame() const {
  return coordinates::toHost(geometry_);
}

void LinuxWindow::setFrame(Rect frame) {
  geometry_ = coordinates::fromHost(frame);
  applyGeometry();
  resizeContent();
}

void LinuxWindow::center() {
  const QScreen* screen = QGuiApplication::screenAt(geometry_.center());
  if (!screen) screen = QGuiApplication::primaryScreen();
  if (!screen) return;
  const QRect available = availableGeometry(watch_, *screen);
  geometry_.moveTo(available.left() + (available.width() - geometry_.width()) / 2,
                   available.top() + (available.height() - geometry_.height()) / 2);
  applyGeometry();
}

void LinuxWindow::applyGeometry() {
  // The toolkit's widgets have a frame of their own, which they keep to when they are shown.
  if (viewWindow_) {
    viewWindow_->setGeometry(geometry_);
  } else if (window_) {
    window_->setGeometry(geometry_);
  }
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
  if (window_) dialog.setTransientParent(window_);
}

void LinuxWindow::show(bool activating) {
  // The visual of a window is for life; a compositor that came or went wants another.
  if (window_ && !window_->isVisible() && isSeeThrough() != hasSeeThroughVisual_) {
    discardWindow();
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
  Qt::WindowFlags flags = Qt::FramelessWindowHint;
  flags |= configuration().kind == WindowKind::panel ? Qt::Tool : Qt::Window;
  if (!configuration().canBecomeKey) flags |= Qt::WindowDoesNotAcceptFocus;
  if (configuration().ignoresMouseEvents) flags |= Qt::WindowTransparentForInput;
  // A window manager would put the window into a frame of its own, which takes the clicks.
  if (configuration().ignoresMouseEvents && !configuration().canBecomeKey) {
    flags |= Qt::BypassWindowManagerHint;
  }
  hasSeeThroughVisual_ = isSeeThrough();
  window_ = contentView_ ? makeViewWindow(flags) : makePictureWindow(flags);
  applyConfiguration();
  applyBackground();
  applyGeometry();

  auto* window = window_;
  const auto follow = [this] { followWindow(); };
  QObject::connect(window, &QWindow::xChanged, window, follow);
  QObject::connect(window, &QWindow::yChanged, window, follow);
  QObject::connect(window, &QWindow::widthChanged, window, follow);
  QObject::connect(window, &QWindow::heightChanged, window, follow);
  QObject::connect(&watch_, &DesktopWatch::compositedChanged, window, [this] {
    if (isVisible()) applyBackground();
  });
}

QWindow* LinuxWindow::makePictureWindow(Qt::WindowFlags flags) {
  pictureWindow_ = std::make_unique<HostWindow>();
  pictureWindow_->setFlags(flags);
  pictureWindow_->onCloseRequest = [this] { orderOut(); };
  return pictureWindow_.get();
}

QWindow* LinuxWindow::makeViewWindow(Qt::WindowFlags flags) {
  viewWindow_ = std::make_unique<ViewWindow>(contentView_);
  viewWindow_->setWindowFlags(flags);
  viewWindow_->onCloseRequest = [this] { orderOut(); };
  applyBackground();
  viewWindow_->winId();  // makes the window that all else is asked of
  return viewWindow_->windowHandle();
}

void LinuxWindow::discardWindow() {
  if (content_) content_->view().setParentItem(nullptr);
  window_ = nullptr;
  pictureWindow_.reset();
  viewWindow_.reset();
}

void LinuxWindow::followWindow() {
  if (!window_->isVisible()) return;
  geometry_ = window_->geometry();
  resizeContent();
}

void LinuxWindow::setContentViewController(std::shared_ptr<FlutterViewController> controller) {
  setContent(std::dynamic_pointer_cast<LinuxFlutterViewController>(std::move(controller)), nullptr);
}

void LinuxWindow::setContentView(std::shared_ptr<View> view) {
  setContent(nullptr, std::move(view));
}

void LinuxWindow::setContent(std::shared_ptr<LinuxFlutterViewController> controller,
                             std::shared_ptr<View> view) {
  if (content_) content_->view().setParentItem(nullptr);
  const bool wasVisible = isVisible();
  const bool isOtherView = view != contentView_;
  content_ = std::move(controller);
  contentView_ = std::move(view);
  // Views are drawn by another kind of window, which belongs to one tree of them.
  if (isOtherView) discardWindow();
  resizeContent();
  if (!wasVisible) return;
  if (isOtherView) {
    show(false);
  } else {
    attachContent();
  }
}

void LinuxWindow::attachContent() {
  if (!content_) return;
  content_->loadView();
  content_->view().setParentItem(pictureWindow_->contentItem());
}

void LinuxWindow::resizeContent() {
  if (content_) content_->setViewSize(geometry_.size());
  if (contentView_) contentView_->setFrame({{0, 0}, coordinates::toHost(geometry_).size});
}

void LinuxWindow::makeContentFirstResponder() {
  if (content_) content_->takeFocus();
  if (viewWindow_) viewWindow_->setFocus(Qt::ActiveWindowFocusReason);
}

std::string LinuxWindow::firstResponderDescription() const {
  // What the keyboard goes to once the window has it, which takes the window manager a moment.
  if (viewWindow_) {
    const auto* widget = viewWindow_->focusWidget();
    return widget ? std::string("<") + widget->metaObject()->className() + ">" : "nil";
  }
  const auto* item = pictureWindow_ ? pictureWindow_->contentItem()->scopedFocusItem() : nullptr;
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
  if (pictureWindow_) {
    pictureWindow_->setMovableByBackground(wanted.movableByWindowBackground);
    pictureWindow_->setResizable(wanted.styleMask & styleMask::resizable);
  }
  window_->setFlag(Qt::WindowTransparentForInput, wanted.ignoresMouseEvents);
  if (window_->opacity() != wanted.alpha) window_->setOpacity(wanted.alpha);
  if (isVisible() && wasAbove_ != isAbove()) {
    wasAbove_ = isAbove();
    hints_.setState(*window_, "_NET_WM_STATE_ABOVE", wasAbove_);
  }
}

void LinuxWindow::applyBackground() {
  // A compositor that came while the window is shown finds a visual without transparency.
  const auto color = isSeeThrough() && hasSeeThroughVisual_ ? QColor(Qt::transparent)
                                                            : QColor::fromRgba(opaqueBackground);
  if (pictureWindow_) pictureWindow_->setColor(color);
  if (viewWindow_) viewWindow_->setBackground(color);
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
