#include "Platform/Linux/Clipboard/ClipboardWorker.h"

#include <poll.h>
#include <xcb/xfixes.h>

#include <algorithm>
#include <chrono>
#include <optional>
#include <utility>

namespace zephyx {
namespace {

// So that a flood of events does not keep announced copies from being asked about.
constexpr int mostEventsInOneStep = 256;

// Shorter than the host waits for a copy: a later one would look like one that the user made.
constexpr FetchPatience selectedTextPatience{std::chrono::milliseconds(300),
                                             std::chrono::milliseconds(300)};

template <typename Event>
const Event& as(const xcb_generic_event_t& event) {
  return reinterpret_cast<const Event&>(event);
}

bool hasExtension(xcb_connection_t* connection, xcb_extension_t& extension) {
  const auto* data = xcb_get_extension_data(connection, &extension);
  return data && data->present;
}

xcb_window_t ownerOf(xcb_connection_t* connection, xcb_atom_t selection) {
  const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      connection, xcb_get_selection_owner(connection, selection), nullptr));
  return reply ? reply->owner : xcb_window_t{XCB_NONE};
}

// Must come before the owner is asked for: no change may fall between the two.
xcb_window_t subscribe(xcb_connection_t* connection, xcb_window_t window, xcb_atom_t selection) {
  const XReply<xcb_xfixes_query_version_reply_t> version(xcb_xfixes_query_version_reply(
      connection, xcb_xfixes_query_version(connection, 5, 0), nullptr));
  xcb_xfixes_select_selection_input(connection, window, selection,
                                    XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER |
                                        XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
  return ownerOf(connection, selection);
}

}  // namespace

std::unique_ptr<ClipboardWorker> ClipboardWorker::make() {
  auto connection = std::make_unique<X11Connection>();
  if (!connection->isValid() || !hasExtension(connection->get(), xcb_xfixes_id)) return nullptr;
  return std::unique_ptr<ClipboardWorker>(new ClipboardWorker(std::move(connection)));
}

ClipboardWorker::ClipboardWorker(std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)),
      clipboard_(connection_->atom("CLIPBOARD")),
      ownerEvent_(static_cast<std::uint8_t>(
          xcb_get_extension_data(connection_->get(), &xcb_xfixes_id)->first_event +
          XCB_XFIXES_SELECTION_NOTIFY)),
      names_(connection_->get()),
      server_(*connection_),
      reader_(connection_->get(), connection_->root(), clipboard_, connection_->atom("INCR"),
              connection_->atom("ZEPHYX_SELECTION")),
      reading_{*connection_, names_, reader_},
      copies_(reading_, subscribe(connection_->get(), server_.window(), clipboard_)),
      primaryReader_(connection_->get(), connection_->root(), XCB_ATOM_PRIMARY,
                     connection_->atom("INCR"), connection_->atom("ZEPHYX_SELECTION")),
      primaryReading_{*connection_, names_, primaryReader_} {}

void ClipboardWorker::resume(const ClipboardWorker& former) {
  ownWritesSeen_ = former.ownWritesSeen_;
  copies_.resume(former.copies_, ownWritesSeen_);
  const auto contents = former.server_.contents(clipboard_);
  if (contents && copies_.newestOwner() == XCB_NONE)
    own(contents, former.server_.lastWrite(clipboard_), nullptr);
}

void ClipboardWorker::own(std::shared_ptr<const OwnedContents> contents, std::uint64_t writeNumber,
                          std::function<void(bool isOwner)> done) {
  server_.own({clipboard_, std::move(contents), writeNumber, std::move(done)});
}

void ClipboardWorker::ownPrimary(std::shared_ptr<const OwnedContents> contents,
                                 std::function<void(bool isOwner)> done) {
  server_.own({XCB_ATOM_PRIMARY, std::move(contents), 0, std::move(done)});
}

void ClipboardWorker::takeSelectedText(xcb_window_t window) {
  const auto owner = ownerOf(connection_->get(), XCB_ATOM_PRIMARY);
  if (!haveSameClient(connection_->get(), owner, window)) return;
  const TypeOffer text{
      pasteboardType::string, {selectionTarget::utf8String, selectionTarget::latin1String}, true};
  fetchType(
      primaryReading_, {.owner = owner}, text,
      [this, text](FetchedType fetched) {
        if (!fetched.payload) return;
        CopySnapshot snapshot;
        snapshot.number = notOnTheClipboard;
        snapshot.offers = {text};
        snapshot.payloads[text.type] = std::move(*fetched.payload);
        selectedTexts_.push_back(std::move(snapshot));
      },
      selectedTextPatience);
}

std::vector<ClipboardNews> ClipboardWorker::takeNews() {
  std::vector<ClipboardNews> news;
  for (auto& each : copies_.takeFinished()) news.emplace_back(std::move(each));
  for (auto& each : std::exchange(selectedTexts_, {})) news.emplace_back(std::move(each));
  for (auto& each : copies_.takeSaved()) news.emplace_back(std::move(each));
  return news;
}

std::vector<ClipboardNews> ClipboardWorker::step() {
  for (int handled = 0; handled < mostEventsInOneStep; ++handled) {
    const auto event = nextEvent_
                           ? std::move(nextEvent_)
                           : XReply<xcb_generic_event_t>(xcb_poll_for_event(connection_->get()));
    if (!event) break;
    handle(*event);
  }
  copies_.startReading();
  const auto now = ClipboardClock::now();
  reader_.expire(now);
  primaryReader_.expire(now);
  server_.expire(now);
  return takeNews();
}

void ClipboardWorker::handle(const xcb_generic_event_t& event) {
  const auto kind = event.response_type & 0x7F;  // the highest bit marks events that were sent
  switch (kind) {
    case XCB_SELECTION_NOTIFY:
      reader_.handle(as<xcb_selection_notify_event_t>(event));
      return primaryReader_.handle(as<xcb_selection_notify_event_t>(event));
    case XCB_PROPERTY_NOTIFY:
      reader_.handle(as<xcb_property_notify_event_t>(event));
      primaryReader_.handle(as<xcb_property_notify_event_t>(event));
      return server_.handle(as<xcb_property_notify_event_t>(event));
    case XCB_SELECTION_REQUEST:
      return server_.handle(as<xcb_selection_request_event_t>(event));
    case XCB_SELECTION_CLEAR:
      return server_.handle(as<xcb_selection_clear_event_t>(event), event.full_sequence);
    case XCB_DESTROY_NOTIFY:
      return server_.handle(as<xcb_destroy_notify_event_t>(event));
    default:  // errors, too: readers may go at any time
      if (kind == ownerEvent_) handleOwnerEvent(event);
  }
}

void ClipboardWorker::handleOwnerEvent(const xcb_generic_event_t& event) {
  const auto& notice = as<xcb_xfixes_selection_notify_event_t>(event);
  if (notice.selection != clipboard_) return;
  if (notice.subtype == XCB_XFIXES_SELECTION_EVENT_SELECTION_CLIENT_CLOSE) {
    // Nothing was copied; what was there is gone.
    return reader_.ownerEnded(copies_.newestOwner());
  }
  const bool isOwn =
      notice.owner == server_.window() ||
      (notice.owner == XCB_NONE && server_.hasReleased(clipboard_, event.full_sequence));
  if (isOwn) ownWritesSeen_ = server_.lastWrite(clipboard_);
  copies_.ownerChanged({notice.owner, notice.selection_timestamp, event.full_sequence, isOwn},
                       ownWritesSeen_);
}

int ClipboardWorker::millisecondsToWait() const {
  std::optional<ClipboardClock::time_point> next;
  for (const auto& each : {reader_.nextDeadline(), primaryReader_.nextDeadline(),
                           server_.nextDeadline(), copies_.nextDeadline()}) {
    if (each) next = next ? std::min(*next, *each) : each;
  }
  if (!next) return -1;
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(*next - ClipboardClock::now());
  return static_cast<int>(std::max<std::chrono::milliseconds::rep>(left.count(), 0));
}

void ClipboardWorker::wait(int descriptor) {
  auto* connection = connection_->get();
  xcb_flush(connection);
  // Sending and asking may have taken events from the socket.
  nextEvent_.reset(xcb_poll_for_queued_event(connection));
  if (nextEvent_ || !isConnected()) return;
  pollfd watched[] = {{xcb_get_file_descriptor(connection), POLLIN, 0}, {descriptor, POLLIN, 0}};
  poll(watched, 2, millisecondsToWait());
}

}  // namespace zephyx
