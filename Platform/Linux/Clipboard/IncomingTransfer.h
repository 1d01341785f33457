#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>

#include "Platform/Linux/Clipboard/SelectionPayload.h"

namespace zephyx {

using ClipboardClock = std::chrono::steady_clock;

/// What is asked of a selection's owner.
struct ConversionRequest {
  xcb_atom_t target = XCB_NONE;
  xcb_timestamp_t time = XCB_CURRENT_TIME;
  xcb_window_t owner = XCB_NONE;  ///< who is expected to answer
  std::size_t maximumBytes = 0;
  ClipboardClock::duration patience{};  ///< how long the owner may stay silent
  ClipboardClock::duration longest = std::chrono::seconds(10);  ///< from the question to the end
  SelectionPayload container;  ///< empty, of the kind that the answer shall have
};

struct ConversionAnswer {
  enum class Outcome {
    Answered,
    Refused,
    TooLarge,
    Late,  ///< no answer in time
    Lost,  ///< what the owner says now may belong to a newer copy
  };
  Outcome outcome = Outcome::Refused;
  SelectionPayload payload;
  std::uint8_t format = 0;     ///< bits per item
  xcb_atom_t type = XCB_NONE;  ///< of the property
};

/// A window of ours that receives one conversion at a time. Each has its own, so that a late answer
/// is never taken for the answer to another question.
struct ConversionSlot {
  xcb_window_t window = XCB_NONE;
  xcb_atom_t property = XCB_NONE;
};

/// One conversion on its way: asked, perhaps arriving in pieces, answered. Never waits for the
/// owner.
class IncomingTransfer {
 public:
  /// Sends the request.
  IncomingTransfer(xcb_connection_t* connection, xcb_atom_t selection, xcb_atom_t incremental,
                   ConversionSlot slot, ConversionRequest request);

  const ConversionSlot& slot() const { return slot_; }
  const ConversionRequest& request() const { return request_; }
  std::uint32_t sequence() const { return sequence_; }
  bool isReceiving() const { return state_ == State::Receiving; }
  std::size_t receivedBytes() const { return sizeOf(payload_); }
  ClipboardClock::time_point deadline() const;

  /// The answer as far as the event completes it.
  std::optional<ConversionAnswer> handle(const xcb_selection_notify_event_t& event);
  std::optional<ConversionAnswer> handle(const xcb_property_notify_event_t& event);

  /// A newer copy waits behind this one: less patience from now on.
  void hurry();

  /// False when the owner may still write to the slot.
  bool hasEnded() const { return state_ == State::Ended; }

 private:
  enum class State { Asked, Receiving, Ended };
  enum class Piece { Read, Missing, TooLarge, Incremental };

  Piece readProperty();
  void reserveFor(std::size_t size);
  ConversionAnswer finish(ConversionAnswer::Outcome outcome);

  xcb_connection_t* connection_;
  xcb_atom_t incremental_;
  ConversionSlot slot_;
  ConversionRequest request_;
  std::uint32_t sequence_ = 0;
  State state_ = State::Asked;
  SelectionPayload payload_;
  std::uint8_t format_ = 0;
  xcb_atom_t type_ = XCB_NONE;
  ClipboardClock::time_point silenceEnds_;
  ClipboardClock::time_point end_;  // for owners that talk slowly, but for ever
};

}  // namespace zephyx
