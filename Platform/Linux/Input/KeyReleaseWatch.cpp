#include "Platform/Linux/Input/KeyReleaseWatch.h"

#include <xcb/xinput.h>

#include <utility>

namespace zephyx {

KeyReleaseWatch::KeyReleaseWatch(std::function<void()> handler) : handler_(std::move(handler)) {
  if (!x11_.isValid() || !selectReleases()) return;
  notifier_ =
      std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(x11_.get()), QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                   [this] { readEvents(); });
}

bool KeyReleaseWatch::selectReleases() {
  auto* connection = x11_.get();
  const auto* extension = xcb_get_extension_data(connection, &xcb_input_id);
  if (!extension || !extension->present) return false;
  // Since 2.1 these events also come while another client holds the keyboard.
  const XReply<xcb_input_xi_query_version_reply_t> version(xcb_input_xi_query_version_reply(
      connection, xcb_input_xi_query_version(connection, 2, 1), nullptr));
  if (!version) return false;
  const struct {
    xcb_input_event_mask_t head;
    std::uint32_t mask;
  } selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1}, XCB_INPUT_XI_EVENT_MASK_RAW_KEY_RELEASE};
  const XReply<xcb_generic_error_t> error(xcb_request_check(
      connection, xcb_input_xi_select_events_checked(connection, x11_.root(), 1, &selection.head)));
  return !error;
}

void KeyReleaseWatch::readEvents() {
  bool released = false;
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(x11_.get())}) released = true;
  if (xcb_connection_has_error(x11_.get())) notifier_->setEnabled(false);
  if (released) handler_();
}

}  // namespace zephyx
