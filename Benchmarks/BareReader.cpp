#include "Benchmarks/BareReader.h"

#include <xcb/xfixes.h>

#include <cstring>
#include <stdexcept>

namespace zephyx {

BareReader::BareReader() : window_(xcb_generate_id(connection_.get())) {
  auto* server = connection_.get();
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(server, 0, window_, connection_.root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  selectionEvent_ = xcb_get_extension_data(server, &xcb_xfixes_id)->first_event;
  xcb_xfixes_query_version(server, 5, 0);
  xcb_xfixes_select_selection_input(server, window_, connection_.atom("CLIPBOARD"),
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
  roundTrip();
}

void BareReader::roundTrip() {
  auto* server = connection_.get();
  const XReply<xcb_get_input_focus_reply_t> reply(
      xcb_get_input_focus_reply(server, xcb_get_input_focus(server), nullptr));
  if (!reply) throw std::runtime_error("the X server went away");
}

template <typename Event>
Event BareReader::wait(std::uint8_t type) {
  while (const XReply<xcb_generic_event_t> any{xcb_wait_for_event(connection_.get())}) {
    if ((any->response_type & 0x7f) != type) continue;
    Event event;
    std::memcpy(&event, any.get(), sizeof event);
    return event;
  }
  throw std::runtime_error("the X server went away");
}

// The property with its deletion, which asks the owner for the next piece.
XReply<xcb_get_property_reply_t> BareReader::take() {
  auto* server = connection_.get();
  const auto cookie = xcb_get_property(server, 1, window_, connection_.atom("BARE"),
                                       XCB_GET_PROPERTY_TYPE_ANY, 0, 16u << 20);
  XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(server, cookie, nullptr));
  if (!reply) throw std::runtime_error("the X server went away");
  return reply;
}

std::size_t BareReader::nextText() {
  auto* server = connection_.get();
  wait<xcb_xfixes_selection_notify_event_t>(selectionEvent_);
  xcb_convert_selection(server, window_, connection_.atom("CLIPBOARD"),
                        connection_.atom("UTF8_STRING"), connection_.atom("BARE"),
                        XCB_CURRENT_TIME);
  xcb_flush(server);
  wait<xcb_selection_notify_event_t>(XCB_SELECTION_NOTIFY);
  auto piece = take();
  const auto length = [&] {
    return static_cast<std::size_t>(xcb_get_property_value_length(piece.get()));
  };
  if (piece->type != connection_.atom("INCR")) return length();
  std::size_t size = 0;
  do {
    const auto changed = wait<xcb_property_notify_event_t>(XCB_PROPERTY_NOTIFY);
    if (changed.state != XCB_PROPERTY_NEW_VALUE) continue;
    piece = take();
    size += length();
  } while (length() > 0);
  return size;
}

}  // namespace zephyx
