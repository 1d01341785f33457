#include "Platform/Linux/Clipboard/IncomingTransfer.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "Platform/Linux/X11.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;
using Outcome = ConversionAnswer::Outcome;

constexpr auto hurriedStart = 250ms;
constexpr auto hurriedSilence = 1s;
constexpr auto hurriedTransfer = 2s;
constexpr std::uint32_t wordsAtOnce = 1u << 20;  // 4 MiB a reply
constexpr std::size_t modestSize = 1u << 20;

}  // namespace

IncomingTransfer::IncomingTransfer(xcb_connection_t* connection, xcb_atom_t selection,
                                   xcb_atom_t incremental, ConversionSlot slot,
                                   ConversionRequest request)
    : connection_(connection),
      incremental_(incremental),
      slot_(slot),
      request_(std::move(request)),
      payload_(std::move(request_.container)),
      silenceEnds_(ClipboardClock::now() + request_.patience),
      end_(ClipboardClock::now() + request_.longest) {
  sequence_ = xcb_convert_selection(connection_, slot_.window, selection, request_.target,
                                    slot_.property, request_.time)
                  .sequence;
}

ClipboardClock::time_point IncomingTransfer::deadline() const {
  return std::min(silenceEnds_, end_);
}

std::optional<ConversionAnswer> IncomingTransfer::handle(
    const xcb_selection_notify_event_t& event) {
  if (state_ != State::Asked || event.target != request_.target) return std::nullopt;
  if (event.property != slot_.property) return finish(Outcome::Refused);
  switch (readProperty()) {
    case Piece::Read:
      return finish(Outcome::Answered);
    case Piece::Missing:
      return finish(Outcome::Refused);
    case Piece::TooLarge:
      return finish(Outcome::TooLarge);
    case Piece::Incremental:
      break;
  }
  state_ = State::Receiving;
  silenceEnds_ = ClipboardClock::now() + request_.patience;
  return std::nullopt;
}

std::optional<ConversionAnswer> IncomingTransfer::handle(const xcb_property_notify_event_t& event) {
  if (state_ != State::Receiving || event.state != XCB_PROPERTY_NEW_VALUE) return std::nullopt;
  const auto before = receivedBytes();
  switch (readProperty()) {
    case Piece::Missing:  // a word about a piece that was read already
    case Piece::Incremental:
      return std::nullopt;
    case Piece::TooLarge: {
      auto answer = finish(Outcome::TooLarge);
      state_ = State::Receiving;  // the owner has more to say
      return answer;
    }
    case Piece::Read:
      break;
  }
  if (receivedBytes() == before) return finish(Outcome::Answered);  // the empty piece ends it
  silenceEnds_ = ClipboardClock::now() + request_.patience;
  return std::nullopt;
}

void IncomingTransfer::hurry() {
  const auto now = ClipboardClock::now();
  request_.patience = std::min<ClipboardClock::duration>(request_.patience, hurriedSilence);
  silenceEnds_ = std::min(silenceEnds_, now + (isReceiving() ? hurriedSilence : hurriedStart));
  end_ = std::min(end_, now + hurriedTransfer);
}

// Waits for the server only. Deleting what was read asks the owner for the next piece.
IncomingTransfer::Piece IncomingTransfer::readProperty() {
  for (std::uint32_t offset = 0;;) {
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(connection_,
                               xcb_get_property(connection_, 1, slot_.window, slot_.property,
                                                XCB_GET_PROPERTY_TYPE_ANY, offset, wordsAtOnce),
                               nullptr));
    if (!reply || reply->type == XCB_NONE) return Piece::Missing;
    const auto size = static_cast<std::size_t>(xcb_get_property_value_length(reply.get()));
    const auto* value = static_cast<const std::uint8_t*>(xcb_get_property_value(reply.get()));
    if (reply->type == incremental_) {
      std::uint32_t expected = 0;
      if (size >= sizeof expected) std::memcpy(&expected, value, sizeof expected);
      reserveFor(std::min<std::size_t>(expected, request_.maximumBytes));
      return Piece::Incremental;
    }
    const auto whole = receivedBytes() + size + reply->bytes_after;
    if (whole > request_.maximumBytes) {
      xcb_delete_property(connection_, slot_.window, slot_.property);
      return Piece::TooLarge;
    }
    reserveFor(whole);
    append(payload_, {value, size});
    if (size > 0 || type_ == XCB_NONE) {  // not of the empty piece that ends a transfer
      format_ = reply->format;
      type_ = reply->type;
    }
    if (reply->bytes_after == 0) return Piece::Read;
    offset += static_cast<std::uint32_t>(size / 4);
  }
}

// Growing by doubling would hold large data twice. Memory that is reserved and never written costs
// nothing, so data that turn out to be large get the whole allowance at once.
void IncomingTransfer::reserveFor(std::size_t size) {
  if (size <= capacityOf(payload_)) return;
  if (receivedBytes() == 0) {
    reserve(payload_, size);
  } else if (size > modestSize) {
    reserve(payload_, request_.maximumBytes);
  }
}

ConversionAnswer IncomingTransfer::finish(Outcome outcome) {
  state_ = State::Ended;
  if (outcome != Outcome::Answered) return {.outcome = outcome, .payload = {}};
  return {outcome, std::move(payload_), format_, type_};
}

}  // namespace zephyx
