#include "Platform/Linux/Windows/DesktopWatch.h"

#include <xcb/xfixes.h>

#include <QtCore/QSocketNotifier>
#include <QtCore/QTimer>

namespace zephyx {
namespace {

/// A session that has just begun starts its panel beside this program.
constexpr int trayPatienceMilliseconds = 3000;

}  // namespace

DesktopWatch::DesktopWatch() = default;

DesktopWatch::~DesktopWatch() = default;

std::unique_ptr<DesktopWatch> DesktopWatch::open() {
  std::unique_ptr<DesktopWatch> watch(new DesktopWatch);
  if (!watch->connection_.isValid()) return nullptr;
  return watch;
}

void DesktopWatch::start() {
  auto* c = connection_.get();
  clockWindow_ = xcb_generate_id(c);
  const std::uint32_t clockEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(c, 0, clockWindow_, connection_.root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                    &clockEvents);
  const std::uint32_t rootEvents = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(c, connection_.root(), XCB_CW_EVENT_MASK, &rootEvents);

  compositorSelection_ = connection_.atom("_NET_WM_CM_S0");
  traySelection_ = connection_.atom("_NET_SYSTEM_TRAY_S0");
  const auto* fixes = xcb_get_extension_data(c, &xcb_xfixes_id);
  if (fixes && fixes->present) {
    selectionEvent_ = static_cast<std::uint8_t>(fixes->first_event + XCB_XFIXES_SELECTION_NOTIFY);
    xcb_xfixes_query_version_unchecked(c, 5, 0);
    for (const auto selection : {compositorSelection_, traySelection_}) {
      xcb_xfixes_select_selection_input(
          c, clockWindow_, selection,
          XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY |
              XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
  }
  updateComposited();
  hasEmbeddingTray_ = hasOwner(traySelection_);
  QTimer::singleShot(trayPatienceMilliseconds, this,
                     [this] { changeTray([this] { isTrayAwaited_ = false; }); });

  notifier_ = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(c), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, this, &DesktopWatch::readEvents);
}

xcb_window_t DesktopWatch::activeWindow() {
  const auto window = connection_.activeWindow();
  keepQueuedEvents();
  return window;
}

xcb_window_t DesktopWatch::focusWindow() {
  auto* c = connection_.get();
  const XReply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(c, xcb_get_input_focus(c), nullptr));
  keepQueuedEvents();
  return reply ? reply->focus : xcb_window_t{XCB_NONE};
}

std::uint32_t DesktopWatch::currentDesktop() {
  const auto items = connection_.property32(connection_.root(), "_NET_CURRENT_DESKTOP");
  keepQueuedEvents();
  return items.empty() ? 0 : items.front();
}

QRect DesktopWatch::geometryOf(xcb_window_t window) {
  auto* c = connection_.get();
  const auto size = xcb_get_geometry(c, window);
  const auto place = xcb_translate_coordinates(c, window, connection_.root(), 0, 0);
  const XReply<xcb_get_geometry_reply_t> sizeReply(xcb_get_geometry_reply(c, size, nullptr));
  const XReply<xcb_translate_coordinates_reply_t> placeReply(
      xcb_translate_coordinates_reply(c, place, nullptr));
  keepQueuedEvents();
  if (!sizeReply || !placeReply) return {};
  return {placeReply->dst_x, placeReply->dst_y, sizeReply->width, sizeReply->height};
}

DesktopStruts DesktopWatch::struts() {
  auto struts = DesktopStruts::read(connection_);
  keepQueuedEvents();
  return struts;
}

xcb_timestamp_t DesktopWatch::serverTime() {
  auto* c = connection_.get();
  xcb_change_property(c, XCB_PROP_MODE_APPEND, clockWindow_, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8,
                      0, nullptr);
  xcb_flush(c);
  xcb_timestamp_t time = XCB_CURRENT_TIME;
  while (time == XCB_CURRENT_TIME) {
    XReply<xcb_generic_event_t> event(xcb_wait_for_event(c));
    if (!event) break;
    const auto* change = reinterpret_cast<const xcb_property_notify_event_t*>(event.get());
    if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY && change->window == clockWindow_) {
      time = change->time;
    } else {
      pending_.push_back(std::move(event));
    }
  }
  keepQueuedEvents();
  return time;
}

void DesktopWatch::keepQueuedEvents() {
  // Events that came along with a reply no longer wake the notifier.
  while (auto* event = xcb_poll_for_queued_event(connection_.get())) pending_.emplace_back(event);
  if (!pending_.empty()) QTimer::singleShot(0, this, &DesktopWatch::readEvents);
}

void DesktopWatch::readEvents() {
  while (auto* event = xcb_poll_for_event(connection_.get())) pending_.emplace_back(event);
  while (!pending_.empty()) {
    const auto event = std::move(pending_.front());
    pending_.pop_front();
    handleEvent(*event);
  }
  keepQueuedEvents();
  if (xcb_connection_has_error(connection_.get())) notifier_->setEnabled(false);
}

void DesktopWatch::handleEvent(const xcb_generic_event_t& event) {
  const auto type = event.response_type & 0x7f;
  if (selectionEvent_ && type == selectionEvent_) {
    updateComposited();
    return changeTray([this] { hasEmbeddingTray_ = hasOwner(traySelection_); });
  }
  if (type != XCB_PROPERTY_NOTIFY) return;
  const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  if (change.window != connection_.root()) return;
  if (change.atom == connection_.atom("_NET_ACTIVE_WINDOW")) emit activeWindowChanged();
  if (change.atom == connection_.atom("_NET_CURRENT_DESKTOP")) emit currentDesktopChanged();
}

bool DesktopWatch::hasOwner(xcb_atom_t selection) const {
  auto* c = connection_.get();
  const XReply<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, selection), nullptr));
  return reply && reply->owner != XCB_NONE;
}

bool DesktopWatch::waylandSession() {
  const auto session = qgetenv("XDG_SESSION_TYPE");
  // One that was started from a console is of the type "tty".
  return session == "wayland" ||
         (session != "x11" && !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"));
}

void DesktopWatch::setHasNotifierHost(bool hasHost) {
  changeTray([this, hasHost] { hasNotifierHost_ = hasHost; });
}

template <typename Change>
void DesktopWatch::changeTray(Change change) {
  const bool hadTray = hasTray();
  change();
  if (hasTray() != hadTray) emit hasTrayChanged();
}

void DesktopWatch::updateComposited() {
  const bool now = hasOwner(compositorSelection_);
  if (now == composited_) return;
  composited_ = now;
  emit compositedChanged();
}

}  // namespace zephyx
