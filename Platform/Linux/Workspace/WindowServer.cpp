#include "Platform/Linux/Workspace/WindowServer.h"

#include <algorithm>

namespace zephyx {
namespace {

constexpr std::uint32_t iconicState = 3;
constexpr std::uint32_t allDesktops = 0xFFFFFFFF;
constexpr xcb_window_t pointerRoot = 1;

QString text(const std::string& value) {
  return QString::fromUtf8(value.c_str());
}

}  // namespace

WindowServer::WindowServer() {
  if (!x11_.isValid()) return;
  // Property changes of this window carry the server's time.
  clockWindow_ = xcb_generate_id(x11_.get());
  const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(x11_.get(), 0, clockWindow_, root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
}

xcb_window_t WindowServer::activeWindow() {
  const std::lock_guard lock(mutex_);
  return x11_.isValid() ? x11_.activeWindow() : xcb_window_t{XCB_NONE};
}

std::optional<int> WindowServer::processOf(xcb_window_t window) {
  const std::lock_guard lock(mutex_);
  return processOfLocked(window);
}

std::optional<int> WindowServer::processOfLocked(xcb_window_t window) {
  if (!x11_.isValid()) return std::nullopt;
  const XReply<xcb_get_geometry_reply_t> geometry(
      xcb_get_geometry_reply(x11_.get(), xcb_get_geometry(x11_.get(), window), nullptr));
  if (!geometry) return std::nullopt;
  // Programs in a sandbox know their process by another number than the system does.
  const int process = x11_.processOfWindow(window);
  return process ? process : static_cast<int>(cardinalLocked(window, "_NET_WM_PID", 0));
}

xcb_window_t WindowServer::topWindowOf(int process) {
  const std::lock_guard lock(mutex_);
  return topWindowOfLocked(process);
}

xcb_window_t WindowServer::topWindowOfLocked(int process) {
  if (!x11_.isValid() || process == 0) return XCB_NONE;
  auto windows = x11_.property32(root(), "_NET_CLIENT_LIST_STACKING");
  std::reverse(windows.begin(), windows.end());
  const auto top = std::find_if(windows.begin(), windows.end(), [&](xcb_window_t window) {
    return processOfLocked(window) == process;
  });
  return top == windows.end() ? xcb_window_t{XCB_NONE} : *top;
}

WindowClass WindowServer::classOf(xcb_window_t window) {
  const std::lock_guard lock(mutex_);
  if (!x11_.isValid() || window == XCB_NONE) return {};
  WindowClass result;
  result.gtkApplicationId = text(x11_.propertyText(window, "_GTK_APPLICATION_ID"));
  result.kdeDesktopFile = text(x11_.propertyText(window, "_KDE_NET_WM_DESKTOP_FILE"));
  const auto names = x11_.propertyText(window, "WM_CLASS");  // instance NUL class NUL
  result.instance = text(names);
  const auto separator = names.find('\0');
  if (separator != std::string::npos) result.className = text(names.substr(separator + 1));
  return result;
}

std::vector<std::uint32_t> WindowServer::iconsOf(WindowOfProcess window) {
  const std::lock_guard lock(mutex_);
  if (!existsLocked(window)) return {};
  return x11_.property32(window.window, "_NET_WM_ICON");
}

bool WindowServer::isInFront(WindowOfProcess window) {
  const std::lock_guard lock(mutex_);
  if (!x11_.isValid()) return false;
  const auto active = x11_.activeWindow();
  if (active == XCB_NONE) return false;
  if (window.window == XCB_NONE) {
    return window.process != 0 && processOfLocked(active) == window.process;
  }
  return active == window.window && existsLocked(window) && hasKeyboardLocked(active);
}

bool WindowServer::activate(WindowOfProcess window) {
  const std::lock_guard lock(mutex_);
  if (window.window == XCB_NONE) window.window = topWindowOfLocked(window.process);
  if (!existsLocked(window)) return false;
  const auto time = serverTimeLocked();
  const auto desktop = cardinalLocked(window.window, "_NET_WM_DESKTOP", allDesktops);
  if (desktop != allDesktops && desktop != cardinalLocked(root(), "_NET_CURRENT_DESKTOP", desktop))
    x11_.askWindowManager(root(), "_NET_CURRENT_DESKTOP", {desktop, time});
  if (cardinalLocked(window.window, "WM_STATE", 0) == iconicState)
    xcb_map_window(x11_.get(), window.window);
  x11_.askWindowManager(window.window, "_NET_ACTIVE_WINDOW", {fromPager, time, XCB_NONE});
  return true;
}

xcb_atom_t WindowServer::atom(const char* name) {
  const std::lock_guard lock(mutex_);
  return x11_.isValid() ? x11_.atom(name) : xcb_atom_t{XCB_NONE};
}

bool WindowServer::existsLocked(WindowOfProcess window) {
  return window.window != XCB_NONE && processOfLocked(window.window) == window.process;
}

bool WindowServer::hasKeyboardLocked(xcb_window_t window) {
  const XReply<xcb_get_input_focus_reply_t> focus(
      xcb_get_input_focus_reply(x11_.get(), xcb_get_input_focus(x11_.get()), nullptr));
  auto holder = focus ? focus->focus : xcb_window_t{XCB_NONE};
  while (holder != XCB_NONE && holder != pointerRoot && holder != root()) {
    if (holder == window) return true;
    const XReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x11_.get(), xcb_query_tree(x11_.get(), holder), nullptr));
    holder = tree ? tree->parent : xcb_window_t{XCB_NONE};
  }
  return false;
}

xcb_timestamp_t WindowServer::serverTimeLocked() {
  xcb_change_property(x11_.get(), XCB_PROP_MODE_APPEND, clockWindow_, XCB_ATOM_WM_NAME,
                      XCB_ATOM_STRING, 8, 0, nullptr);
  // The event stands in the queue once a later request has been answered. What else is in the
  // queue are errors about windows that have closed.
  const XReply<xcb_get_input_focus_reply_t> answered(
      xcb_get_input_focus_reply(x11_.get(), xcb_get_input_focus(x11_.get()), nullptr));
  xcb_timestamp_t time = XCB_CURRENT_TIME;
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(x11_.get())}) {
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY) continue;
    time = reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
  }
  return time;
}

std::uint32_t WindowServer::cardinalLocked(xcb_window_t window, const char* name,
                                           std::uint32_t otherwise) {
  const auto items = x11_.property32(window, name);
  return items.empty() ? otherwise : items.front();
}

}  // namespace zephyx
