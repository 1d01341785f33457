#include "Platform/Linux/X11.h"

#include <xcb/res.h>

#include <algorithm>
#include <cstring>

namespace zephyx {

X11Connection::X11Connection() : connection_(xcb_connect(nullptr, nullptr)), owned_(true) {
  setUp();
}

X11Connection::X11Connection(xcb_connection_t* borrowed) : connection_(borrowed) {
  setUp();
}

X11Connection::~X11Connection() {
  if (owned_) xcb_disconnect(connection_);
}

void X11Connection::setUp() {
  if (xcb_connection_has_error(connection_)) return;
  screen_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data;
}

xcb_atom_t X11Connection::atom(const std::string& name) {
  if (const auto known = atoms_.find(name); known != atoms_.end()) return known->second;
  const auto cookie =
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str());
  const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection_, cookie, nullptr));
  if (!reply) return XCB_NONE;
  atomNames_[reply->atom] = name;
  return atoms_[name] = reply->atom;
}

std::string X11Connection::atomName(xcb_atom_t atom) {
  if (const auto known = atomNames_.find(atom); known != atomNames_.end()) return known->second;
  const XReply<xcb_get_atom_name_reply_t> reply(
      xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr));
  if (!reply) return {};
  std::string name(xcb_get_atom_name_name(reply.get()),
                   static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get())));
  return atomNames_[atom] = std::move(name);
}

std::vector<std::uint8_t> X11Connection::property(xcb_window_t window, xcb_atom_t property,
                                                  std::uint32_t maximumBytes) {
  const auto cookie = xcb_get_property(connection_, 0, window, property, XCB_GET_PROPERTY_TYPE_ANY,
                                       0, maximumBytes / 4);
  const XReply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection_, cookie, nullptr));
  if (!reply) return {};
  const auto* bytes = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
  return {bytes, bytes + xcb_get_property_value_length(reply.get())};
}

std::vector<std::uint32_t> X11Connection::property32(xcb_window_t window, const std::string& name) {
  const auto bytes = property(window, atom(name));
  std::vector<std::uint32_t> items(bytes.size() / 4);
  if (!items.empty()) std::memcpy(items.data(), bytes.data(), items.size() * 4);
  return items;
}

std::string X11Connection::propertyText(xcb_window_t window, const std::string& name) {
  const auto bytes = property(window, atom(name));
  return {bytes.begin(), bytes.end()};
}

xcb_window_t X11Connection::activeWindow() {
  const auto items = property32(root(), "_NET_ACTIVE_WINDOW");
  return items.empty() ? xcb_window_t{XCB_NONE} : items.front();
}

void X11Connection::askWindowManager(xcb_window_t window, const std::string& type,
                                     std::initializer_list<std::uint32_t> data) {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = atom(type);
  std::copy(data.begin(), data.end(), message.data.data32);
  xcb_send_event(connection_, 0, root(),
                 XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(connection_);
}

int X11Connection::processOfWindow(xcb_window_t window) {
  const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const auto cookie = xcb_res_query_client_ids(connection_, 1, &spec);
  const XReply<xcb_res_query_client_ids_reply_t> reply(
      xcb_res_query_client_ids_reply(connection_, cookie, nullptr));
  if (!reply) return 0;
  for (auto ids = xcb_res_query_client_ids_ids_iterator(reply.get()); ids.rem;
       xcb_res_client_id_value_next(&ids)) {
    if ((ids.data->spec.mask & XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID) &&
        xcb_res_client_id_value_value_length(ids.data) > 0) {
      return static_cast<int>(*xcb_res_client_id_value_value(ids.data));
    }
  }
  return 0;
}

}  // namespace zephyx
