#include "Platform/Linux/Menus/LinuxStatusItem.h"

#include <QtGui/QCursor>
#include <utility>

#include "Platform/Linux/Input/ToolkitEvents.h"
#include "Platform/Linux/Menus/SymbolIcon.h"
#include "Platform/Linux/Windows/DesktopWatch.h"
#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {

constexpr int trayDelayMilliseconds = 15;
constexpr int retryMilliseconds = 20;
constexpr int maximumAttempts = 25;

/// While another program holds a grab, a menu of ours would stay on the screen and hear no key and
/// no click outside it, even after that grab has ended.
bool canGrabInput() {
  auto* c = toolkitConnection();
  const auto root = xcb_setup_roots_iterator(xcb_get_setup(c)).data->root;
  const auto keyboard =
      xcb_grab_keyboard(c, 0, root, XCB_CURRENT_TIME, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const auto pointer =
      xcb_grab_pointer(c, 0, root, XCB_EVENT_MASK_BUTTON_RELEASE, XCB_GRAB_MODE_ASYNC,
                       XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME);
  const XReply<xcb_grab_keyboard_reply_t> keyboardReply(
      xcb_grab_keyboard_reply(c, keyboard, nullptr));
  const XReply<xcb_grab_pointer_reply_t> pointerReply(xcb_grab_pointer_reply(c, pointer, nullptr));
  const bool hasKeyboard = keyboardReply && keyboardReply->status == XCB_GRAB_STATUS_SUCCESS;
  const bool hasPointer = pointerReply && pointerReply->status == XCB_GRAB_STATUS_SUCCESS;
  if (hasKeyboard) xcb_ungrab_keyboard(c, XCB_CURRENT_TIME);
  if (hasPointer) xcb_ungrab_pointer(c, XCB_CURRENT_TIME);
  xcb_flush(c);
  return hasKeyboard && hasPointer;
}

}  // namespace

LinuxStatusItem::LinuxStatusItem(DesktopWatch& watch)
    : tray_(watch, [this](QPoint position) { open(position, LinuxMenu::KeyboardPlace::none); }) {
  retry_.setSingleShot(true);
  retry_.setInterval(retryMilliseconds);
  QObject::connect(&retry_, &QTimer::timeout, &retry_, [this] { openWhenInputIsFree(); });
  QObject::connect(&watch, &DesktopWatch::menuWanted, &tray_, [this] { performClick(); });
  // The first window is drawn first; a tray shows what comes to it when it gets to it.
  QTimer::singleShot(trayDelayMilliseconds, &tray_, [this] { tray_.start(); });
}

void LinuxStatusItem::setImage(const std::string& symbol,
                               const std::string& accessibilityDescription) {
  tray_.setIcon(symbolIcon(symbol), QString::fromStdString(accessibilityDescription));
}

void LinuxStatusItem::setMenu(std::shared_ptr<Menu> menu) {
  shown_.reset();
  menu_ = std::move(menu);
}

void LinuxStatusItem::cancelTrackingWithoutAnimation() {
  retry_.stop();
  if (shown_) shown_->close();
}

void LinuxStatusItem::performClick() {
  // A menu that is opened again comes up in its old place, not below a pointer that has moved on.
  open(tray_.menuPosition().value_or(position_.value_or(QCursor::pos())),
       LinuxMenu::KeyboardPlace::asBefore);
}

void LinuxStatusItem::open(QPoint position, LinuxMenu::KeyboardPlace keyboardPlace) {
  if (!menu_) return;
  if (shown_ && shown_->isOpen()) return shown_->close();
  keyboardPlace_ = keyboardPlace;
  position_ = position;
  attemptsLeft_ = maximumAttempts;
  openWhenInputIsFree();
}

void LinuxStatusItem::openWhenInputIsFree() {
  if (!canGrabInput()) {
    if (--attemptsLeft_ > 0) retry_.start();
    return;
  }
  if (!shown_) shown_ = std::make_unique<LinuxMenu>(menu_);
  shown_->popUp(*position_, keyboardPlace_);
}

std::shared_ptr<StatusItem> LinuxStatusBar::makeStatusItem(double) {
  return std::make_shared<LinuxStatusItem>(watch_);
}

}  // namespace zephyx
