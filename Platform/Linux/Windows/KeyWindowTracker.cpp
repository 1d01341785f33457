#include "Platform/Linux/Windows/KeyWindowTracker.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QWindow>
#include <algorithm>
#include <utility>

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
    if (watch_.activeWindow() == XCB_NONE && !isOwnWindow(watch_.focusWindow())) {
      resignActive();
    } else {
      update();
    }
  });
  connect(qGuiApp, &QGuiApplication::focusWindowChanged, this, [this](QWindow* window) {
    // By now the keyboard may have left again: the window has had it, and loses it.
    auto* shown = window && window->handle()
                      ? shownWindow(static_cast<xcb_window_t>(window->winId()))
                      : nullptr;
    if (shown) {
      isActive_ = true;
      setKey(shown);
    }
    update();
  });
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
  if (isOwnWindow(focus)) {
    isActive_ = true;
    return setKey(shownWindow(focus));
  }
  if (!isActive_) return;
  const auto active = watch_.activeWindow();
  if (active == XCB_NONE) return recheck_.start();
  if (isOwnWindow(active)) {
    // The keyboard is on its way there, or has left for a moment.
    if (key_ && active != key_->nativeId()) setKey(nullptr);
    return;
  }
  resignActive();
}

// Those who hear that a window has lost the keyboard may ask whether the application has.
void KeyWindowTracker::resignActive() {
  if (!std::exchange(isActive_, false)) return;
  setKey(nullptr);
  if (!isActive_) center_.post(notification::applicationDidResignActive, this);
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
