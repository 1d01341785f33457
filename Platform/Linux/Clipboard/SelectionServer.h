#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>

#include "Platform/Linux/Clipboard/OutgoingTransfers.h"
#include "Platform/Linux/Clipboard/OwnedContents.h"
#include "Platform/Linux/X11.h"

namespace zephyx {

/// Owns selections with the host's own contents and answers the programs that ask for them. Used by
/// the connection's thread; never waits for a program.
class SelectionServer {
 public:
  explicit SelectionServer(X11Connection& connection);
  SelectionServer(const SelectionServer&) = delete;
  SelectionServer& operator=(const SelectionServer&) = delete;

  /// Owner of the selections.
  xcb_window_t window() const { return window_; }

  struct Write {
    xcb_atom_t selection = XCB_NONE;
    std::shared_ptr<const OwnedContents> contents;
    std::uint64_t number = 0;
    std::function<void(bool isOwner)> done;  ///< may be empty; dropped uncalled with the server
  };
  /// Takes a selection over as soon as the server has told the time; with nothing to offer, leaves
  /// it without an owner.
  void own(Write write);
  /// What `selection` has of the host's; null when another program has it.
  std::shared_ptr<const OwnedContents> contents(xcb_atom_t selection) const;
  /// The number of the last write that took `selection`; 0 before the first one.
  std::uint64_t lastWrite(xcb_atom_t selection) const;
  /// Whether the request with this sequence number was the one that left `selection` ownerless.
  bool hasReleased(xcb_atom_t selection, std::uint32_t sequence) const;

  void handle(const xcb_selection_request_event_t& event);
  void handle(const xcb_selection_clear_event_t& event, std::uint32_t sequence);
  void handle(const xcb_property_notify_event_t& event);
  void handle(const xcb_destroy_notify_event_t& event) { transfers_.handle(event); }

  void expire(ClipboardClock::time_point now) { transfers_.expire(now); }
  std::optional<ClipboardClock::time_point> nextDeadline() const {
    return transfers_.nextDeadline();
  }

 private:
  struct Ownership {
    std::shared_ptr<const OwnedContents> contents;
    xcb_timestamp_t time = XCB_CURRENT_TIME;
    std::uint32_t sequence = 0;  // of the request that took the selection
  };
  struct PendingWrite {
    Write write;
    int attempts = 0;
  };

  void askForTime();
  bool take(const Write& write, xcb_timestamp_t time);
  bool answer(const Ownership& ownership, xcb_window_t reader, xcb_atom_t target,
              xcb_atom_t property);
  bool answerSeveral(const Ownership& ownership, xcb_window_t reader, xcb_atom_t property);
  void offerTargets(const OwnedContents& contents, xcb_window_t reader, xcb_atom_t property);

  X11Connection& connection_;
  xcb_window_t window_;
  xcb_atom_t targets_;
  xcb_atom_t multiple_;
  xcb_atom_t timestamp_;
  xcb_atom_t atomPair_;
  xcb_atom_t clock_;  // a property of the window; touching it makes the server tell the time
  OutgoingTransfers transfers_;
  std::map<xcb_atom_t, Ownership> owned_;
  std::map<xcb_atom_t, std::uint64_t> lastWrites_;
  std::map<xcb_atom_t, std::uint32_t> releases_;  // sequence numbers
  std::deque<PendingWrite> pending_;
};

}  // namespace zephyx
