#include "Tests/Desktop/ClipboardProgram.h"

#include <poll.h>

#include <algorithm>
#include <future>

namespace zephyx {

ClipboardProgram::ClipboardProgram()
    : window_(xcb_generate_id(connection_.get())), clipboard_(connection_.atom("CLIPBOARD")) {
  xcb_create_window(connection_.get(), 0, window_, connection_.root(), 0, 0, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
  thread_ = std::thread([this] { run(); });
}

ClipboardProgram::~ClipboardProgram() {
  perform([this] { isQuitting_ = true; });
  thread_.join();
}

void ClipboardProgram::perform(std::function<void()> action) {
  std::promise<void> done;
  {
    const std::lock_guard lock(mutex_);
    actions_.push_back([&] {
      action();
      xcb_flush(connection_.get());
      done.set_value();
    });
  }
  wake_.raise();
  done.get_future().wait();
}

void ClipboardProgram::run() {
  while (!isQuitting_) {
    wake_.lower();
    std::vector<std::function<void()>> actions;
    {
      const std::lock_guard lock(mutex_);
      actions.swap(actions_);
    }
    for (const auto& action : actions) action();
    handleEvents();
    const int wait = copyNextText();
    xcb_flush(connection_.get());
    // Flushing may have taken events from the socket, which then does not wake anybody.
    if (const XReply<xcb_generic_event_t> event{xcb_poll_for_queued_event(connection_.get())}) {
      handle(*event);
      xcb_flush(connection_.get());
      continue;
    }
    if (isQuitting_) break;
    pollfd watched[] = {{xcb_get_file_descriptor(connection_.get()), POLLIN, 0},
                        {wake_.descriptor(), POLLIN, 0}};
    poll(watched, 2, wait);
  }
}

void ClipboardProgram::handleEvents() {
  while (const XReply<xcb_generic_event_t> event{xcb_poll_for_event(connection_.get())}) {
    handle(*event);
  }
}

// Milliseconds until the next one.
int ClipboardProgram::copyNextText() {
  if (nextText_ >= texts_.size()) return -1;
  if (Clock::now() >= nextCopy_) {
    take({{"UTF8_STRING", texts_[nextText_++]}});
    nextCopy_ = Clock::now() + interval_;
  }
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(nextCopy_ - Clock::now());
  return std::max(0, static_cast<int>(left.count()));
}

void ClipboardProgram::take(Formats formats) {
  formats_ = std::move(formats);
  xcb_set_selection_owner(connection_.get(), window_, clipboard_, XCB_CURRENT_TIME);
}

ClipboardProgram::Clock::time_point ClipboardProgram::copy(Formats formats) {
  Clock::time_point moment;
  perform([&] {
    moment = Clock::now();
    take(std::move(formats));
  });
  return moment;
}

void ClipboardProgram::copyTexts(std::vector<std::string> texts,
                                 std::chrono::microseconds interval) {
  perform([&] {
    texts_ = std::move(texts);
    nextText_ = 0;
    interval_ = interval;
    nextCopy_ = Clock::now();
  });
}

void ClipboardProgram::setManners(const Manners& manners) {
  perform([&] { manners_ = manners; });
}

void ClipboardProgram::answerHeld() {
  perform([this] {
    for (const auto& request : std::exchange(held_, {})) notify(request, provide(request));
  });
}

void ClipboardProgram::disown() {
  perform([this] {
    xcb_set_selection_owner(connection_.get(), XCB_NONE, clipboard_, XCB_CURRENT_TIME);
  });
}

std::vector<std::string> ClipboardProgram::requests() const {
  const std::lock_guard lock(mutex_);
  return requests_;
}

void ClipboardProgram::handle(const xcb_generic_event_t& event) {
  switch (event.response_type & 0x7F) {
    case XCB_SELECTION_REQUEST:
      return answer(reinterpret_cast<const xcb_selection_request_event_t&>(event));
    case XCB_PROPERTY_NOTIFY:
      return sendPiece(reinterpret_cast<const xcb_property_notify_event_t&>(event));
    default:
      break;
  }
}

void ClipboardProgram::answer(const xcb_selection_request_event_t& request) {
  const auto name = connection_.atomName(request.target);
  {
    const std::lock_guard lock(mutex_);
    requests_.push_back(name);
  }
  const bool isTargets = name == "TARGETS";
  if (!(isTargets ? manners_.answersTargets : manners_.answersData)) return;
  if (!isTargets && manners_.holdsData) return held_.push_back(request);
  notify(request, provide(request));
}

bool ClipboardProgram::provide(const xcb_selection_request_event_t& request) {
  auto* connection = connection_.get();
  const auto put = [&](xcb_atom_t type, std::uint8_t format, std::size_t count, const void* data) {
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, request.requestor, request.property,
                        type, format, static_cast<std::uint32_t>(count), data);
  };
  const auto name = connection_.atomName(request.target);
  if (name == "TARGETS") {
    std::vector<xcb_atom_t> atoms{request.target};
    for (const auto& [target, data] : formats_) atoms.push_back(connection_.atom(target));
    const auto bits = static_cast<std::uint8_t>(manners_.targetsFormat);
    put(XCB_ATOM_ATOM, bits, atoms.size() * 32 / bits, atoms.data());
    return true;
  }
  const auto offered = std::find_if(formats_.begin(), formats_.end(),
                                    [&](const auto& format) { return format.first == name; });
  if (offered == formats_.end() || offered->second == "refused") return false;
  const auto& data = offered->second;
  if (data.size() <= manners_.piece && !manners_.neverEnds) {
    const auto type = manners_.types.find(name);
    const auto format = manners_.formats.find(name);
    const int bits = format == manners_.formats.end() ? 8 : format->second;
    put(type == manners_.types.end() ? request.target : connection_.atom(type->second),
        static_cast<std::uint8_t>(bits), data.size() * 8 / static_cast<std::size_t>(bits),
        data.data());
    return true;
  }
  const std::uint32_t watched = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_change_window_attributes(connection, request.requestor, XCB_CW_EVENT_MASK, &watched);
  const std::uint32_t hint = 1;
  put(connection_.atom("INCR"), 32, 1, &hint);
  sending_[{request.requestor, request.property}] = {0, data, request.target};
  return true;
}

void ClipboardProgram::notify(const xcb_selection_request_event_t& request, bool isProvided) {
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = request.time;
  notice.requestor = request.requestor;
  notice.selection = request.selection;
  notice.target = request.target;
  notice.property = isProvided ? request.property : xcb_atom_t{XCB_NONE};
  xcb_send_event(connection_.get(), 0, request.requestor, 0,
                 reinterpret_cast<const char*>(&notice));
}

void ClipboardProgram::sendPiece(const xcb_property_notify_event_t& event) {
  const auto found = sending_.find({event.window, event.atom});
  if (event.state != XCB_PROPERTY_DELETE || found == sending_.end()) return;
  auto& [sent, data, type] = found->second;
  if (manners_.neverEnds && sent == data.size()) sent = 0;
  const auto size = std::min(manners_.piece, data.size() - sent);
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, event.window, event.atom, type, 8,
                      static_cast<std::uint32_t>(size), data.data() + sent);
  sent += size;
  if (size == 0) sending_.erase(found);
}

}  // namespace zephyx
