#include "Tests/Desktop/SelectionOwner.h"

#include <poll.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>

namespace zephyx {
namespace {

template <typename T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
  return {reply, &std::free};
}

}  // namespace

SelectionOwner::SelectionOwner(const std::string& display, const std::string& selection)
    : connection_(xcb_connect(display.c_str(), nullptr)) {
  if (xcb_connection_has_error(connection_)) throw std::runtime_error("no X server " + display);
  const auto root = xcb_setup_roots_iterator(xcb_get_setup(connection_)).data->root;
  window_ = xcb_generate_id(connection_);
  xcb_create_window(connection_, XCB_COPY_FROM_PARENT, window_, root, 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, 0, nullptr);
  selection_ = atom(selection);
  thread_ = std::thread([this] { run(); });
}

SelectionOwner::~SelectionOwner() {
  ends_ = true;
  thread_.join();
  xcb_disconnect(connection_);
}

std::uint32_t SelectionOwner::atom(const std::string& name) {
  const auto reply = owned(xcb_intern_atom_reply(
      connection_,
      xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.data()),
      nullptr));
  return reply ? reply->atom : XCB_NONE;
}

std::string SelectionOwner::atomName(std::uint32_t atom) {
  const auto reply =
      owned(xcb_get_atom_name_reply(connection_, xcb_get_atom_name(connection_, atom), nullptr));
  if (!reply) return {};
  return {xcb_get_atom_name_name(reply.get()),
          static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

std::chrono::steady_clock::time_point SelectionOwner::copy(Formats formats) {
  {
    const std::lock_guard lock(mutex_);
    formats_ = std::move(formats);
  }
  xcb_set_selection_owner(connection_, window_, selection_, XCB_CURRENT_TIME);
  const auto moment = std::chrono::steady_clock::now();
  xcb_flush(connection_);
  return moment;
}

std::chrono::steady_clock::time_point SelectionOwner::copyText(const std::string& text) {
  return copy({{"UTF8_STRING", text}, {"text/plain;charset=utf-8", text}});
}

int SelectionOwner::requests(const std::string& target) const {
  const std::lock_guard lock(mutex_);
  const auto found = requests_.find(target);
  return found == requests_.end() ? 0 : found->second;
}

void SelectionOwner::run() {
  while (!ends_) {
    while (const auto event = owned(xcb_poll_for_event(connection_)))
      if ((event->response_type & 0x7f) == XCB_SELECTION_REQUEST) answer(event.get());
    pollfd readable{xcb_get_file_descriptor(connection_), POLLIN, 0};
    poll(&readable, 1, 5);
  }
}

void SelectionOwner::answer(const void* requestEvent) {
  const auto& request = *static_cast<const xcb_selection_request_event_t*>(requestEvent);
  const std::string target = atomName(request.target);
  std::string bytes;
  std::vector<std::uint32_t> names;
  bool known = false;
  {
    const std::lock_guard lock(mutex_);
    ++requests_[target];
    const auto found = formats_.find(target);
    if ((known = found != formats_.end())) bytes = found->second;
    if (target == "TARGETS")
      for (const auto& [name, content] : formats_) names.push_back(atom(name));
  }
  const Behaviour behaviour = behaviour_;
  if (behaviour == Behaviour::NeverAnswers) return;
  if (behaviour == Behaviour::AnswersTargetsOnly && target != "TARGETS") return;

  const auto property = request.property ? request.property : request.target;
  if (target == "TARGETS") {
    names.push_back(request.target);
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request.requestor, property,
                        XCB_ATOM_ATOM, 32, static_cast<std::uint32_t>(names.size()), names.data());
  } else if (known) {
    xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, request.requestor, property,
                        request.target, 8, static_cast<std::uint32_t>(bytes.size()), bytes.data());
  }
  xcb_selection_notify_event_t notify{};
  notify.response_type = XCB_SELECTION_NOTIFY;
  notify.time = request.time;
  notify.requestor = request.requestor;
  notify.selection = request.selection;
  notify.target = request.target;
  if (known || target == "TARGETS") notify.property = property;
  xcb_send_event(connection_, 0, request.requestor, 0, reinterpret_cast<const char*>(&notify));
  xcb_flush(connection_);
}

}  // namespace zephyx
