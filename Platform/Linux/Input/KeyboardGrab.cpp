#include "Platform/Linux/Input/KeyboardGrab.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <chrono>
#include <utility>

#include "Platform/Linux/Input/HeldKeys.h"
#include "Platform/Linux/Input/ToolkitEvents.h"
#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

constexpr auto retryInterval = 50ms;
constexpr auto retryLimit = 2'000ms;
constexpr auto farewellInterval = 20ms;
constexpr auto farewellLimit = 2'000ms;

xcb_window_t idOf(const QWindow* window) {
  return window && window->handle() && window->isVisible()
             ? static_cast<xcb_window_t>(window->winId())
             : xcb_window_t{XCB_NONE};
}

/// The window that has the keyboard anyway, so that no window is told that it gets or loses it.
xcb_window_t windowForKeys(xcb_connection_t* connection) {
  const XReply<xcb_get_input_focus_reply_t> focus(
      xcb_get_input_focus_reply(connection, xcb_get_input_focus(connection), nullptr));
  auto chosen = idOf(QGuiApplication::focusWindow());
  const auto windows = QGuiApplication::topLevelWindows();
  for (const auto* window : windows) {
    const auto id = idOf(window);
    if (id == XCB_NONE) continue;
    if (focus && focus->focus == id) return id;
    if (chosen == XCB_NONE) chosen = id;
  }
  return chosen;
}

}  // namespace

KeyboardGrab::KeyboardGrab() : connection_(toolkitConnection()) {
  retry_.setInterval(retryInterval);
  QObject::connect(&retry_, &QTimer::timeout, &retry_, [this] { tryAgain(); });
  farewell_.setInterval(farewellInterval);
  QObject::connect(&farewell_, &QTimer::timeout, &farewell_, [this] { releaseWhenIdle(); });
}

KeyboardGrab::~KeyboardGrab() {
  release();
}

bool KeyboardGrab::hold() {
  farewell_.stop();
  if (!isHeld_ && !retry_.isActive()) {
    switch (grab()) {
      case Outcome::taken:
        break;
      case Outcome::busy:
        since_.start();
        retry_.start();
        break;
      case Outcome::impossible:
        return false;
    }
  }
  ++holders_;
  return true;
}

void KeyboardGrab::letGo() {
  if (--holders_ > 0) return;
  retry_.stop();
  since_.start();
  releaseWhenIdle();
  if (isHeld_) farewell_.start();
}

// A hot key that is still down has the keyboard on this connection already, which gives way.
KeyboardGrab::Outcome KeyboardGrab::grab() {
  const auto window = connection_ ? windowForKeys(connection_) : xcb_window_t{XCB_NONE};
  if (window == XCB_NONE) return Outcome::impossible;
  const XReply<xcb_grab_keyboard_reply_t> reply(
      xcb_grab_keyboard_reply(connection_,
                              xcb_grab_keyboard(connection_, 0, window, XCB_CURRENT_TIME,
                                                XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                              nullptr));
  if (!reply) return Outcome::impossible;
  isHeld_ = reply->status == XCB_GRAB_STATUS_SUCCESS;
  if (isHeld_) return Outcome::taken;
  return reply->status == XCB_GRAB_STATUS_INVALID_TIME ? Outcome::impossible : Outcome::busy;
}

void KeyboardGrab::tryAgain() {
  if (since_.hasExpired(retryLimit.count()) || grab() != Outcome::busy) retry_.stop();
}

void KeyboardGrab::releaseWhenIdle() {
  if (!isHeld_ || since_.hasExpired(farewellLimit.count()) || !hasPressedKeys(connection_))
    release();
}

void KeyboardGrab::release() {
  farewell_.stop();
  retry_.stop();
  if (!std::exchange(isHeld_, false)) return;
  xcb_ungrab_keyboard(connection_, XCB_CURRENT_TIME);
  xcb_flush(connection_);
}

}  // namespace zephyx
