#pragma once

#include <xcb/xcb.h>

#include <string>
#include <vector>

#include "Platform/Linux/X11.h"

namespace zephyx {

/// Another program that pastes, one step after the other.
class PastingProgram {
 public:
  PastingProgram() : window_(xcb_generate_id(connection_.get())) {
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_.get(), 0, window_, connection_.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK,
                      &events);
  }

  X11Connection& connection() { return connection_; }

  void put(const std::string& property, const std::vector<xcb_atom_t>& atoms) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, window_,
                        connection_.atom(property), connection_.atom("ATOM_PAIR"), 32,
                        static_cast<std::uint32_t>(atoms.size()), atoms.data());
  }
  /// Asks for a target and waits for the first word about it; false when it is refused.
  bool ask(const std::string& target, const std::string& property) {
    xcb_convert_selection(connection_.get(), window_, connection_.atom("CLIPBOARD"),
                          connection_.atom(target), connection_.atom(property), XCB_CURRENT_TIME);
    xcb_flush(connection_.get());
    while (const auto event = XReply<xcb_generic_event_t>(xcb_wait_for_event(connection_.get()))) {
      if ((event->response_type & 0x7F) != XCB_SELECTION_NOTIFY) continue;
      return reinterpret_cast<const xcb_selection_notify_event_t&>(*event).property != XCB_NONE;
    }
    return false;
  }
  struct Property {
    std::string type;
    std::string data;
    int format = 8;
  };
  /// Reads a property and deletes it.
  Property take(const std::string& property) {
    const XReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        connection_.get(),
        xcb_get_property(connection_.get(), 1, window_, connection_.atom(property),
                         XCB_GET_PROPERTY_TYPE_ANY, 0, 1u << 24),
        nullptr));
    if (!reply || reply->type == XCB_NONE) return {};
    return {connection_.atomName(reply->type),
            {static_cast<const char*>(xcb_get_property_value(reply.get())),
             static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))},
            reply->format};
  }
  /// A target as a whole; its type is empty when it is refused.
  Property paste(const std::string& target) {
    if (!ask(target, "PASTED")) return {};
    auto pasted = take("PASTED");
    if (pasted.type == "INCR") pasted = takePieces("PASTED");
    return pasted;
  }
  /// The rest of a transfer in pieces.
  Property takePieces(const std::string& property) {
    Property whole;
    while (const auto event = XReply<xcb_generic_event_t>(xcb_wait_for_event(connection_.get()))) {
      const auto& notice = reinterpret_cast<const xcb_property_notify_event_t&>(*event);
      if ((event->response_type & 0x7F) != XCB_PROPERTY_NOTIFY ||
          notice.state != XCB_PROPERTY_NEW_VALUE || notice.atom != connection_.atom(property)) {
        continue;
      }
      const auto piece = take(property);
      if (piece.type.empty()) continue;
      if (piece.data.empty()) break;
      whole = {piece.type, whole.data + piece.data, piece.format};
    }
    return whole;
  }

 private:
  X11Connection connection_;
  xcb_window_t window_;
};

}  // namespace zephyx
