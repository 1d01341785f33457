#include "Platform/Linux/Clipboard/SelectionServer.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "Platform/Linux/Clipboard/OwnerChange.h"

namespace zephyx {
namespace {

constexpr int mostAttempts = 3;
constexpr std::uint32_t mostPairs = 256;

xcb_window_t makeWindow(X11Connection& connection) {
  const auto window = xcb_generate_id(connection.get());
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection.get(), 0, window, connection.root(), -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return window;
}

}  // namespace

SelectionServer::SelectionServer(X11Connection& connection)
    : connection_(connection),
      window_(makeWindow(connection)),
      targets_(connection.atom("TARGETS")),
      multiple_(connection.atom("MULTIPLE")),
      timestamp_(connection.atom("TIMESTAMP")),
      atomPair_(connection.atom("ATOM_PAIR")),
      clock_(connection.atom("ZEPHYX_CLOCK")),
      transfers_(connection.get(), connection.atom("INCR")) {}

void SelectionServer::own(Write write) {
  pending_.push_back({std::move(write)});
  askForTime();
}

std::shared_ptr<const OwnedContents> SelectionServer::contents(xcb_atom_t selection) const {
  const auto owned = owned_.find(selection);
  return owned == owned_.end() ? nullptr : owned->second.contents;
}

std::uint64_t SelectionServer::lastWrite(xcb_atom_t selection) const {
  const auto found = lastWrites_.find(selection);
  return found == lastWrites_.end() ? 0 : found->second;
}

bool SelectionServer::hasReleased(xcb_atom_t selection, std::uint32_t sequence) const {
  const auto found = releases_.find(selection);
  return found != releases_.end() && found->second == sequence;
}

void SelectionServer::askForTime() {
  xcb_change_property(connection_.get(), XCB_PROP_MODE_APPEND, window_, clock_, XCB_ATOM_INTEGER, 8,
                      0, nullptr);
}

void SelectionServer::handle(const xcb_property_notify_event_t& event) {
  if (event.window != window_) return transfers_.handle(event);
  if (event.atom != clock_ || event.state != XCB_PROPERTY_NEW_VALUE) return;
  for (auto pending = std::exchange(pending_, {}); !pending.empty(); pending.pop_front()) {
    auto& next = pending.front();
    const bool isOwner = take(next.write, event.time);
    // Another program took the selection between the server's word and ours; this write was meant
    // to come after that.
    if (!isOwner && ++next.attempts < mostAttempts) {
      pending_.push_back(std::move(next));
      askForTime();
    } else if (next.write.done) {
      next.write.done(isOwner);
    }
  }
}

bool SelectionServer::take(const Write& write, xcb_timestamp_t time) {
  auto* connection = connection_.get();
  const bool isEmpty = write.contents->targets().empty();
  const auto owner = isEmpty ? xcb_window_t{XCB_NONE} : window_;
  const auto request = xcb_set_selection_owner(connection, owner, write.selection, time);
  const XReply<xcb_get_selection_owner_reply_t> reply(xcb_get_selection_owner_reply(
      connection, xcb_get_selection_owner(connection, write.selection), nullptr));
  if (!reply || reply->owner != owner) return false;
  if (isEmpty) {
    owned_.erase(write.selection);
    releases_[write.selection] = request.sequence;
  } else {
    owned_[write.selection] = {write.contents, time, request.sequence};
  }
  lastWrites_[write.selection] = write.number;
  return true;
}

// A word about the loss of an ownership that has been renewed since is old news.
void SelectionServer::handle(const xcb_selection_clear_event_t& event, std::uint32_t sequence) {
  const auto lost = owned_.find(event.selection);
  if (lost == owned_.end() || isLater(lost->second.sequence, sequence)) return;
  owned_.erase(lost);
}

void SelectionServer::handle(const xcb_selection_request_event_t& event) {
  const auto property = event.property ? event.property : event.target;  // from old programs
  const auto found = owned_.find(event.selection);
  const bool isOurs = found != owned_.end() &&
                      (event.time == XCB_CURRENT_TIME || !isLater(found->second.time, event.time));
  bool isAnswered = false;
  if (isOurs) {
    isAnswered = event.target == multiple_
                     ? event.property && answerSeveral(found->second, event.requestor, property)
                     : answer(found->second, event.requestor, event.target, property);
  }
  xcb_selection_notify_event_t notice{};
  notice.response_type = XCB_SELECTION_NOTIFY;
  notice.time = event.time;
  notice.requestor = event.requestor;
  notice.selection = event.selection;
  notice.target = event.target;
  notice.property = isAnswered ? property : xcb_atom_t{XCB_NONE};
  xcb_send_event(connection_.get(), 0, event.requestor, XCB_EVENT_MASK_NO_EVENT,
                 reinterpret_cast<const char*>(&notice));
}

bool SelectionServer::answer(const Ownership& ownership, xcb_window_t reader, xcb_atom_t target,
                             xcb_atom_t property) {
  if (target == targets_) {
    offerTargets(*ownership.contents, reader, property);
    return true;
  }
  if (target == timestamp_) {
    xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, reader, property,
                        XCB_ATOM_INTEGER, 32, 1, &ownership.time);
    return true;
  }
  for (const auto& name : ownership.contents->targets()) {
    if (connection_.atom(name) != target) continue;
    auto found = ownership.contents->target(name);
    if (!found) return false;
    transfers_.send(reader, property, connection_.atom(found->type), found->format,
                    std::move(found->data));
    return true;
  }
  return false;
}

void SelectionServer::offerTargets(const OwnedContents& contents, xcb_window_t reader,
                                   xcb_atom_t property) {
  std::vector<xcb_atom_t> atoms{targets_, multiple_, timestamp_};
  for (const auto& name : contents.targets()) atoms.push_back(connection_.atom(name));
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, reader, property, XCB_ATOM_ATOM, 32,
                      static_cast<std::uint32_t>(atoms.size()), atoms.data());
}

// The reader's property holds pairs of target and property; those that fail are marked in it.
bool SelectionServer::answerSeveral(const Ownership& ownership, xcb_window_t reader,
                                    xcb_atom_t property) {
  const XReply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection_.get(),
                             xcb_get_property(connection_.get(), 0, reader, property,
                                              XCB_GET_PROPERTY_TYPE_ANY, 0, 2 * mostPairs),
                             nullptr));
  if (!reply || reply->format != 32 || reply->bytes_after > 0) return false;
  const auto* items = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
  std::vector<xcb_atom_t> pairs(items, items + reply->value_len);
  for (std::size_t i = 0; i + 1 < pairs.size(); i += 2) {
    const bool isAnswered = pairs[i] != multiple_ && pairs[i + 1] != XCB_NONE &&
                            answer(ownership, reader, pairs[i], pairs[i + 1]);
    if (!isAnswered) pairs[i + 1] = XCB_NONE;
  }
  xcb_change_property(connection_.get(), XCB_PROP_MODE_REPLACE, reader, property, atomPair_, 32,
                      static_cast<std::uint32_t>(pairs.size()), pairs.data());
  return true;
}

}  // namespace zephyx
