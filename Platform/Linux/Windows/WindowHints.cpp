#include "Platform/Linux/Windows/WindowHints.h"

#include <QtGui/QWindow>

#include "Platform/Linux/Input/ToolkitEvents.h"
#include "Platform/Linux/Windows/DesktopWatch.h"

namespace zephyx {
namespace {

xcb_window_t nativeWindow(const QWindow& window) {
  return static_cast<xcb_window_t>(window.winId());
}

}  // namespace

WindowHints::WindowHints(DesktopWatch& watch) : watch_(watch), connection_(toolkitConnection()) {}

void WindowHints::prepareToMap(const QWindow& window, const std::vector<std::string>& states) {
  std::vector<xcb_atom_t> atoms;
  atoms.reserve(states.size());
  for (const auto& state : states) atoms.push_back(connection_.atom(state));
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, nativeWindow(window),
                      connection_.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, 32,
                      static_cast<std::uint32_t>(atoms.size()), atoms.data());
  // A window that was shown before would otherwise come back on the desktop that it left.
  xcb_delete_property(connection_.get(), nativeWindow(window), connection_.atom("_NET_WM_DESKTOP"));
}

void WindowHints::setState(const QWindow& window, const std::string& state, bool on) {
  connection_.askWindowManager(nativeWindow(window), "_NET_WM_STATE",
                               {on ? 1u : 0u, connection_.atom(state), 0, fromPager, 0});
}

void WindowHints::moveToCurrentDesktop(const QWindow& window) {
  connection_.askWindowManager(nativeWindow(window), "_NET_WM_DESKTOP",
                               {watch_.currentDesktop(), fromPager, 0, 0, 0});
}

void WindowHints::activate(const QWindow& window) {
  lastActivation_ = std::chrono::steady_clock::now();
  const auto time = watch_.serverTime();
  if (!hasWindowManager()) {
    xcb_set_input_focus(connection_.get(), XCB_INPUT_FOCUS_PARENT, nativeWindow(window), time);
    xcb_flush(connection_.get());
    return;
  }
  connection_.askWindowManager(nativeWindow(window), "_NET_ACTIVE_WINDOW",
                               {fromPager, time, 0, 0, 0});
}

// One that was killed leaves its word about a window that is gone.
bool WindowHints::hasWindowManager() {
  const auto named = connection_.property32(connection_.root(), "_NET_SUPPORTING_WM_CHECK");
  return !named.empty() &&
         connection_.property32(named.front(), "_NET_SUPPORTING_WM_CHECK") == named;
}

bool WindowHints::hasJustActivated() const {
  return std::chrono::steady_clock::now() - lastActivation_ < std::chrono::milliseconds(100);
}

}  // namespace zephyx
