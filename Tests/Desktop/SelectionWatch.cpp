#include "Tests/Desktop/SelectionWatch.h"

#include <poll.h>
#include <xcb/xcb.h>
#include <xcb/xfixes.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string_view>

namespace zephyx {
namespace {

template <typename T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
  return {reply, &std::free};
}

}  // namespace

SelectionWatch::SelectionWatch(const std::string& display)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection_)) throw std::runtime_error("no X server " + display);
  firstEvent_ = xcb_get_extension_data(connection_, &xcb_xfixes_id)->first_event;
  const auto version = owned(xcb_xfixes_query_version_reply(
      connection_, xcb_xfixes_query_version(connection_, 5, 0), nullptr));
  constexpr std::string_view name = "CLIPBOARD";
  const auto atom = owned(xcb_intern_atom_reply(
      connection_, xcb_intern_atom(connection_, 0, name.size(), name.data()), nullptr));
  if (!version || !atom) throw std::runtime_error("the X server has no XFixes extension");
  const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  xcb_xfixes_select_selection_input(connection_, root, atom->atom,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
  owned(xcb_get_input_focus_reply(connection_, xcb_get_input_focus(connection_), nullptr));
}

SelectionWatch::~SelectionWatch() {
  xcb_disconnect(connection_);
}

std::chrono::steady_clock::time_point SelectionWatch::waitForCopy() {
  for (;;) {
    while (const auto event = owned(xcb_poll_for_event(connection_)))
      if ((event->response_type & 0x7f) == firstEvent_) return std::chrono::steady_clock::now();
    pollfd readable{xcb_get_file_descriptor(connection_), POLLIN, 0};
    if (poll(&readable, 1, 10'000) <= 0) throw std::runtime_error("nothing was copied");
  }
}

}  // namespace zephyx
