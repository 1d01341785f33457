#include "Platform/Linux/Clipboard/OutgoingTransfers.h"

#include <algorithm>
#include <utility>

namespace zephyx {
namespace {

constexpr std::chrono::seconds readerPatience(30);
constexpr std::size_t preferredPiece = 256u << 10;
constexpr std::size_t requestHeader = 64;

}  // namespace

OutgoingTransfers::OutgoingTransfers(xcb_connection_t* connection, xcb_atom_t incremental)
    : connection_(connection),
      incremental_(incremental),
      largestPiece_(std::min<std::size_t>(
          preferredPiece,
          std::size_t{xcb_get_maximum_request_length(connection)} * 4 - requestHeader)) {}

void OutgoingTransfers::send(xcb_window_t reader, xcb_atom_t property, xcb_atom_t type,
                             std::uint8_t format, SharedBytes data) {
  transfers_.remove_if([&](const Transfer& transfer) {
    return transfer.reader == reader && transfer.property == property;
  });
  Transfer transfer{
      reader, property, type, format, std::move(data), 0, ClipboardClock::now() + readerPatience};
  if (transfer.data.bytes.size() <= largestPiece_) return write(transfer, transfer.data.bytes);

  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  xcb_change_window_attributes(connection_, reader, XCB_CW_EVENT_MASK, &events);
  const auto size = static_cast<std::uint32_t>(transfer.data.bytes.size());
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, reader, property, incremental_, 32, 1,
                      &size);
  transfers_.push_back(std::move(transfer));
}

void OutgoingTransfers::write(const Transfer& transfer, BytesView piece) {
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, transfer.reader, transfer.property,
                      transfer.type, transfer.format,
                      static_cast<std::uint32_t>(piece.size() * 8 / transfer.format), piece.data());
}

// The reader deletes each piece when it wants the next one.
void OutgoingTransfers::handle(const xcb_property_notify_event_t& event) {
  if (event.state != XCB_PROPERTY_DELETE) return;
  const auto transfer = std::find_if(transfers_.begin(), transfers_.end(), [&](const auto& each) {
    return each.reader == event.window && each.property == event.atom;
  });
  if (transfer == transfers_.end()) return;
  const auto left = transfer->data.bytes.subspan(transfer->sent);
  const auto piece = left.first(std::min(left.size(), largestPiece_));
  write(*transfer, piece);
  transfer->sent += piece.size();
  transfer->deadline = ClipboardClock::now() + readerPatience;
  if (!piece.empty()) return;
  transfers_.erase(transfer);  // the empty piece was the last one
  stopWatchingIdleReader(event.window);
}

void OutgoingTransfers::handle(const xcb_destroy_notify_event_t& event) {
  transfers_.remove_if([&](const Transfer& transfer) { return transfer.reader == event.window; });
}

void OutgoingTransfers::expire(ClipboardClock::time_point now) {
  for (auto each = transfers_.begin(); each != transfers_.end();) {
    if (each->deadline > now) {
      ++each;
      continue;
    }
    const auto reader = each->reader;
    each = transfers_.erase(each);
    stopWatchingIdleReader(reader);
  }
}

std::optional<ClipboardClock::time_point> OutgoingTransfers::nextDeadline() const {
  std::optional<ClipboardClock::time_point> next;
  for (const auto& each : transfers_) next = next ? std::min(*next, each.deadline) : each.deadline;
  return next;
}

void OutgoingTransfers::stopWatchingIdleReader(xcb_window_t reader) {
  const bool isBusy = std::any_of(transfers_.begin(), transfers_.end(),
                                  [&](const auto& each) { return each.reader == reader; });
  if (isBusy) return;
  const std::uint32_t nothing = 0;
  xcb_change_window_attributes(connection_, reader, XCB_CW_EVENT_MASK, &nothing);
}

}  // namespace zephyx
