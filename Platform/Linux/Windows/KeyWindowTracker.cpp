#include "Platform/Linux/Windows/KeyWindowTracker.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <algorithm>

#include "Platform/Linux/Windows/DesktopWatch.h"
#include "Platform/Linux/Windows/LinuxWindow.h"

namespace zephyx {
namespace {

/// Between two windows the window manager reports none for a moment.
constexpr int settleMilliseconds = 80;

bool isOwnWindow(xcb_window_t nativeId) {
  const auto windows = QGuiApplication::allWindows();
  return std::any_of(windows.begin(), windows.end(), [&](const QWindow* window) {
    return window->handle() && window->winId() == nativeId;
  });
}

}  // namespace

KeyWindowTracker::KeyWindowTracker(DesktopWatch& watch, LocalNotificationCenter& center)
    : watch_(watch), center_(center) {
  recheck_.setSingleShot(true);
  recheck_.setInterval(settleMilliseconds);
  recheck_.setTimerType(Qt::PreciseTimer);
  connect(&recheck_, &QTimer::timeout, this, [this] {
    if (watch_.activeWindow() == XCB_NONE && !shownWindow(watch_.focusWindow())) {
      setKey(nullptr);
    } else {
      update();
    }
  });
  connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, &KeyWindowTracker::update);
  connect(&watch, &DesktopWatch::activeWindowChanged, this, &KeyWindowTracker::update);
}

void KeyWindowTracker::remove(LinuxWindow* window) {
  std::erase(windows_, window);
  if (key_ == window) key_ = nullptr;
}

void KeyWindowTracker::windowWasOrderedOut(LinuxWindow* window) {
  if (key_ == window) setKey(nullptr);
}

void KeyWindowTracker::update() {
  recheck_.stop();
  const auto focus = watch_.focusWindow();
  if (auto* window = shownWindow(focus)) return setKey(window);
  if (!key_) return;
  if (isOwnWindow(focus)) return setKey(nullptr);

  const auto active = watch_.activeWindow();
  if (active == key_->nativeId()) return;
  if (active == XCB_NONE) return recheck_.start();
  setKey(nullptr);
}

void KeyWindowTracker::setKey(LinuxWindow* window) {
  if (key_ == window) return;
  auto* previous = key_;
  // The new key window is in place before anybody hears: observers ask who it is.
  key_ = window;
  if (previous) center_.post(notification::windowDidResignKey, previous->notificationObject());
  if (window && key_ == window) {
    center_.post(notification::windowDidBecomeKey, window->notificationObject());
  }
}

LinuxWindow* KeyWindowTracker::shownWindow(unsigned int nativeId) const {
  if (nativeId == XCB_NONE) return nullptr;
  for (auto* window : windows_) {
    if (window->isVisible() && window->nativeId() == nativeId) return window;
  }
  return nullptr;
}

}  // namespace zephyx
