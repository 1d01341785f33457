#include "Tests/Desktop/DesktopWindows.h"

#include <xcb/res.h>
#include <xcb/xcb.h>

#include <algorithm>
#include <cstring>
#include <set>
#include <stdexcept>

#include "Tests/Desktop/WaitFor.h"
#include "Tests/Desktop/XcbReply.h"

namespace zephyx {
DesktopWindows::DesktopWindows(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection_)) throw std::runtime_error("no X server " + display);
  root_ = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
}

DesktopWindows::~DesktopWindows() {
  xcb_disconnect(connection_);
}

std::uint32_t DesktopWindows::atom(const std::string& name) const {
  auto& known = atoms_[name];
  if (known) return known;
  const auto reply = owned(xcb_intern_atom_reply(
      connection_,
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
      nullptr));
  return known = reply ? reply->atom : XCB_NONE;
}

std::string DesktopWindows::textProperty(WindowId window, const std::string& name) const {
  const auto reply = owned(xcb_get_property_reply(
      connection_,
      xcb_get_property(connection_, 0, window, atom(name), XCB_GET_PROPERTY_TYPE_ANY, 0, 1u << 16),
      nullptr));
  if (!reply) return {};
  return {static_cast<const char*>(xcb_get_property_value(reply.get())),
          static_cast<std::size_t>(xcb_get_property_value_length(reply.get()))};
}

std::vector<std::uint32_t> DesktopWindows::property32(WindowId window,
                                                      const std::string& name) const {
  const std::string bytes = textProperty(window, name);
  std::vector<std::uint32_t> result(bytes.size() / 4);
  if (!result.empty()) std::memcpy(result.data(), bytes.data(), result.size() * 4);
  return result;
}

bool DesktopWindows::hasProperty(WindowId window, const std::string& name) const {
  return !textProperty(window, name).empty();
}

pid_t DesktopWindows::processOf(WindowId window) const {
  const xcb_res_client_id_spec_t spec{window, XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID};
  const auto reply = owned(xcb_res_query_client_ids_reply(
      connection_, xcb_res_query_client_ids(connection_, 1, &spec), nullptr));
  if (!reply) return 0;
  for (auto id = xcb_res_query_client_ids_ids_iterator(reply.get()); id.rem;
       xcb_res_client_id_value_next(&id))
    if (id.data->spec.mask == XCB_RES_CLIENT_ID_MASK_LOCAL_CLIENT_PID && id.data->length >= 4)
      return static_cast<pid_t>(*xcb_res_client_id_value_value(id.data));
  return 0;
}

DesktopWindow DesktopWindows::describe(WindowId window) const {
  DesktopWindow result;
  result.id = window;
  const auto geometryCookie = xcb_get_geometry(connection_, window);
  const auto attributesCookie = xcb_get_window_attributes(connection_, window);
  const auto positionCookie = xcb_translate_coordinates(connection_, window, root_, 0, 0);
  if (const auto geometry = owned(xcb_get_geometry_reply(connection_, geometryCookie, nullptr))) {
    result.width = geometry->width;
    result.height = geometry->height;
  }
  if (const auto attributes =
          owned(xcb_get_window_attributes_reply(connection_, attributesCookie, nullptr))) {
    result.viewable = attributes->map_state == XCB_MAP_STATE_VIEWABLE;
    result.overrideRedirect = attributes->override_redirect;
  }
  if (const auto position =
          owned(xcb_translate_coordinates_reply(connection_, positionCookie, nullptr))) {
    result.x = position->dst_x;
    result.y = position->dst_y;
  }
  const std::string classes = textProperty(window, "WM_CLASS");
  result.instance = classes.c_str();
  if (result.instance.size() < classes.size())
    result.className = classes.c_str() + result.instance.size() + 1;
  result.title = textProperty(window, "_NET_WM_NAME");
  if (result.title.empty()) result.title = textProperty(window, "WM_NAME");
  result.pid = processOf(window);
  return result;
}

std::vector<DesktopWindow> DesktopWindows::managed() const {
  std::vector<DesktopWindow> result;
  for (const WindowId window : property32(root_, "_NET_CLIENT_LIST"))
    result.push_back(describe(window));
  return result;
}

void DesktopWindows::collect(WindowId window, int depth, std::vector<DesktopWindow>& result) const {
  const auto tree =
      owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
  if (!tree) return;
  for (int index = 0; index < xcb_query_tree_children_length(tree.get()); ++index) {
    auto child = describe(xcb_query_tree_children(tree.get())[index]);
    if (!child.viewable) continue;
    const WindowId id = child.id;
    if (child.width >= 4 && child.height >= 4) result.push_back(std::move(child));
    if (depth < 4) collect(id, depth + 1, result);
  }
}

std::vector<DesktopWindow> DesktopWindows::viewable() const {
  std::vector<DesktopWindow> result;
  collect(root_, 0, result);
  return result;
}

std::optional<DesktopWindow> DesktopWindows::find(const Predicate& predicate) const {
  for (auto& window : managed())
    if (predicate(window)) return window;
  return std::nullopt;
}

std::string DesktopWindows::description() const {
  std::string text;
  for (const auto& window : managed())
    text += " " + window.className + " of " + std::to_string(window.pid) +
            (window.viewable ? ", viewable, colours " : ", hidden, colours ") +
            std::to_string(distinctColors(window)) + ";";
  return text;
}

DesktopWindow DesktopWindows::waitForManaged(const std::string& what, const Predicate& predicate,
                                             std::chrono::milliseconds deadline) const {
  std::optional<DesktopWindow> result;
  if (!waitFor([&] { return (result = find(predicate)).has_value(); }, deadline))
    throw std::runtime_error("no window of " + what + ";" + description());
  return *result;
}

DesktopWindow DesktopWindows::waitForClass(const std::string& className) const {
  return waitForManaged("class " + className, [&](const DesktopWindow& window) {
    return window.viewable && (window.className == className || window.instance == className);
  });
}

WindowId DesktopWindows::active() const {
  const auto values = property32(root_, "_NET_ACTIVE_WINDOW");
  return values.empty() ? 0 : values.front();
}

WindowId DesktopWindows::focused() const {
  const auto reply =
      owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
  return reply ? reply->focus : 0;
}

void DesktopWindows::send(WindowId receiver, WindowId window, const std::string& type,
                          std::initializer_list<std::uint32_t> data) const {
  xcb_client_message_event_t message{};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window;
  message.type = atom(type);
  std::copy(data.begin(), data.end(), message.data.data32);
  const std::uint32_t mask =
      XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT;
  xcb_send_event(connection_, 0, receiver, receiver == root_ ? mask : 0,
                 reinterpret_cast<const char*>(&message));
  xcb_flush(connection_);
}

bool DesktopWindows::activate(WindowId window) const {
  send(root_, window, "_NET_ACTIVE_WINDOW", {2});  // as a pager, whose wish window managers grant
  return waitFor([&] { return active() == window; });
}

void DesktopWindows::close(WindowId window) const {
  send(root_, window, "_NET_CLOSE_WINDOW", {0, 2});
}

bool DesktopWindows::exists(WindowId window) const {
  return owned(xcb_get_geometry_reply(connection_, xcb_get_geometry(connection_, window),
                                      nullptr)) != nullptr;
}

WindowId DesktopWindows::selectionOwner(const std::string& selection) const {
  const auto reply = owned(xcb_get_selection_owner_reply(
      connection_, xcb_get_selection_owner(connection_, atom(selection)), nullptr));
  return reply ? reply->owner : 0;
}

WindowId DesktopWindows::parentOf(WindowId window) const {
  const auto tree =
      owned(xcb_query_tree_reply(connection_, xcb_query_tree(connection_, window), nullptr));
  return tree ? tree->parent : 0;
}

bool DesktopWindows::isGrabbedByOthers(std::uint8_t keyCode, std::uint16_t modifiers) const {
  // A program that wants the key meanwhile is not refused: it waits.
  xcb_grab_server(connection_);
  const auto cookie = xcb_grab_key_checked(connection_, 1, root_, modifiers, keyCode,
                                           XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  const auto error = owned(xcb_request_check(connection_, cookie));
  if (!error) xcb_ungrab_key(connection_, keyCode, root_, modifiers);
  xcb_ungrab_server(connection_);
  xcb_flush(connection_);
  return error && error->error_code == XCB_ACCESS;
}

std::chrono::milliseconds DesktopWindows::ping(WindowId window) const {
  // GTK answers to those who watch the root's children, Qt to those who watch the root itself.
  const std::uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, root_, XCB_CW_EVENT_MASK, &events);
  static std::uint32_t serial = 1000;
  const std::uint32_t number = ++serial;
  const std::uint32_t protocols = atom("WM_PROTOCOLS"), pingAtom = atom("_NET_WM_PING");
  const auto start = std::chrono::steady_clock::now();
  send(window, window, "WM_PROTOCOLS", {pingAtom, number, window});
  (void)waitFor(
      [&] {
        while (const auto event = owned(xcb_poll_for_event(connection_))) {
          if ((event->response_type & 0x7f) != XCB_CLIENT_MESSAGE) continue;
          const auto* answer = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
          if (answer->type == protocols && answer->data.data32[0] == pingAtom &&
              answer->data.data32[1] == number)
            return true;
        }
        return false;
      },
      std::chrono::seconds(1), std::chrono::milliseconds(1));
  return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() -
                                                               start);
}

std::vector<std::uint32_t> DesktopWindows::pixels(WindowId window, int x, int y, int width,
                                                  int height) const {
  const auto reply = owned(xcb_get_image_reply(
      connection_,
      xcb_get_image(connection_, XCB_IMAGE_FORMAT_Z_PIXMAP, window, static_cast<std::int16_t>(x),
                    static_cast<std::int16_t>(y), static_cast<std::uint16_t>(width),
                    static_cast<std::uint16_t>(height), ~0u),
      nullptr));
  if (!reply) return {};
  std::vector<std::uint32_t> pixels(
      static_cast<std::size_t>(xcb_get_image_data_length(reply.get())) / 4);
  std::memcpy(pixels.data(), xcb_get_image_data(reply.get()), pixels.size() * 4);
  return pixels;
}

int DesktopWindows::distinctColors(const DesktopWindow& window) const {
  const auto part =
      pixels(window.id, 0, 0, std::min(window.width, 320), std::min(window.height, 240));
  return static_cast<int>(std::set(part.begin(), part.end()).size());
}

}  // namespace zephyx
