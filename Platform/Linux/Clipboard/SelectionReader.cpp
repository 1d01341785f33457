#include "Platform/Linux/Clipboard/SelectionReader.h"

#include <algorithm>
#include <utility>

#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {

using Outcome = ConversionAnswer::Outcome;

// A window that an unanswered question named stays for as long as this many others: an owner that
// wakes up and finds its requestor gone may be ended by the error.
constexpr std::size_t mostRetiredSlots = 32;
constexpr std::size_t mostBytesInFlight = 128u << 20;

}  // namespace

SelectionReader::SelectionReader(xcb_connection_t* connection, xcb_window_t root,
                                 xcb_atom_t selection, xcb_atom_t incremental, xcb_atom_t property)
    : connection_(connection),
      root_(root),
      selection_(selection),
      incremental_(incremental),
      property_(property) {}

SelectionReader::~SelectionReader() = default;

void SelectionReader::convert(ConversionRequest request, Completion completion) {
  conversions_.push_back(
      {IncomingTransfer(connection_, selection_, incremental_, takeSlot(), std::move(request)),
       std::move(completion)});
}

ConversionSlot SelectionReader::takeSlot() {
  if (!freeSlots_.empty()) {
    const auto slot = freeSlots_.back();
    freeSlots_.pop_back();
    return slot;
  }
  const ConversionSlot slot{xcb_generate_id(connection_), property_};
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection_, 0, slot.window, root_, -1, -1, 1, 1, 0,
                    XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return slot;
}

void SelectionReader::retire(ConversionSlot slot) {
  retiredSlots_.push_back(slot);
  if (retiredSlots_.size() <= mostRetiredSlots) return;
  xcb_destroy_window(connection_, retiredSlots_.front().window);
  retiredSlots_.pop_front();
}

void SelectionReader::handle(const xcb_selection_notify_event_t& event) {
  if (event.selection != selection_) return;
  for (auto conversion = conversions_.begin(); conversion != conversions_.end(); ++conversion) {
    if (conversion->transfer.slot().window != event.requestor) continue;
    if (auto answer = conversion->transfer.handle(event)) complete(conversion, std::move(*answer));
    return;
  }
  handleLateAnswer(event);
}

void SelectionReader::handle(const xcb_property_notify_event_t& event) {
  if (event.atom != property_ || event.state != XCB_PROPERTY_NEW_VALUE) return;
  for (auto conversion = conversions_.begin(); conversion != conversions_.end(); ++conversion) {
    if (conversion->transfer.slot().window != event.window) continue;
    if (auto answer = conversion->transfer.handle(event)) {
      complete(conversion, std::move(*answer));
    } else {
      limitMemory();
    }
    return;
  }
}

// A whole answer leaves the slot as good as new. The first piece of one in pieces does not: its
// owner would go on writing whenever a later reader deletes something.
void SelectionReader::handleLateAnswer(const xcb_selection_notify_event_t& event) {
  const auto slot =
      std::find_if(retiredSlots_.begin(), retiredSlots_.end(),
                   [&](const ConversionSlot& each) { return each.window == event.requestor; });
  if (slot == retiredSlots_.end()) return;
  const XReply<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection_,
                             xcb_get_property(connection_, 0, slot->window, slot->property,
                                              XCB_GET_PROPERTY_TYPE_ANY, 0, 0),
                             nullptr));
  if (!reply || reply->type == incremental_) return;
  xcb_delete_property(connection_, slot->window, slot->property);
  freeSlots_.push_back(*slot);
  retiredSlots_.erase(slot);
}

void SelectionReader::complete(Conversions::iterator conversion, ConversionAnswer answer) {
  // Out of the list first: the completion may ask the next question.
  Conversions done;
  done.splice(done.end(), conversions_, conversion);
  if (done.front().transfer.hasEnded()) {
    freeSlots_.push_back(done.front().transfer.slot());
  } else {
    retire(done.front().transfer.slot());
  }
  done.front().completion(std::move(answer));
}

void SelectionReader::abandon(Conversions::iterator conversion, Outcome outcome) {
  complete(conversion, {.outcome = outcome, .payload = {}});
}

void SelectionReader::abandonWhere(const std::function<bool(const IncomingTransfer&)>& condition,
                                   Outcome outcome) {
  // Completions ask further questions, which are not meant.
  std::vector<Conversions::iterator> meant;
  for (auto each = conversions_.begin(); each != conversions_.end(); ++each) {
    if (condition(each->transfer)) meant.push_back(each);
  }
  for (const auto each : meant) abandon(each, outcome);
}

void SelectionReader::limitMemory() {
  std::size_t total = 0;
  for (const auto& each : conversions_) total += each.transfer.receivedBytes();
  if (total <= mostBytesInFlight) return;
  const auto largest =
      std::max_element(conversions_.begin(), conversions_.end(), [](const auto& a, const auto& b) {
        return a.transfer.receivedBytes() < b.transfer.receivedBytes();
      });
  abandon(largest, Outcome::TooLarge);
}

void SelectionReader::ownerChanged(const OwnerChange& change) {
  abandonWhere(
      [&](const IncomingTransfer& transfer) {
        if (transfer.isReceiving()) return false;  // what it receives was settled before
        // The server routes a request to the owner at the time when it carries the request out. A
        // program that copies again may answer an earlier request with the newer contents.
        return isLater(transfer.sequence(), change.sequence) ||
               haveSameClient(connection_, transfer.request().owner, change.owner);
      },
      Outcome::Lost);
  for (auto& each : conversions_) each.transfer.hurry();
}

void SelectionReader::ownerEnded(xcb_window_t owner) {
  abandonWhere(
      [&](const IncomingTransfer& transfer) {
        return haveSameClient(connection_, transfer.request().owner, owner);
      },
      Outcome::Lost);
}

void SelectionReader::expire(ClipboardClock::time_point now) {
  abandonWhere([now](const IncomingTransfer& transfer) { return transfer.deadline() <= now; },
               Outcome::Late);
}

std::optional<ClipboardClock::time_point> SelectionReader::nextDeadline() const {
  std::optional<ClipboardClock::time_point> next;
  for (const auto& each : conversions_) {
    const auto deadline = each.transfer.deadline();
    next = next ? std::min(*next, deadline) : deadline;
  }
  return next;
}

}  // namespace zephyx
