#pragma once

#include <xcb/xcb.h>

#include <list>
#include <optional>

#include "Platform/Linux/Clipboard/IncomingTransfer.h"
#include "Platform/Linux/Clipboard/OwnedContents.h"

namespace zephyx {

/// Data on their way to the programs that asked for them; large ones go in pieces, at each reader's
/// own speed. A transfer keeps its data, also when a newer copy has replaced them. Used by the
/// connection's thread.
class OutgoingTransfers {
 public:
  OutgoingTransfers(xcb_connection_t* connection, xcb_atom_t incremental);

  /// Writes the data, or the promise of pieces, to the reader's property.
  void send(xcb_window_t reader, xcb_atom_t property, xcb_atom_t type, std::uint8_t format,
            SharedBytes data);

  void handle(const xcb_property_notify_event_t& event);
  void handle(const xcb_destroy_notify_event_t& event);

  void expire(ClipboardClock::time_point now);
  std::optional<ClipboardClock::time_point> nextDeadline() const;

 private:
  struct Transfer {
    xcb_window_t reader;
    xcb_atom_t property;
    xcb_atom_t type;
    std::uint8_t format;  // bits per item
    SharedBytes data;
    std::size_t sent;
    ClipboardClock::time_point deadline;
  };

  void write(const Transfer& transfer, BytesView piece);
  void stopWatchingIdleReader(xcb_window_t reader);

  xcb_connection_t* connection_;
  xcb_atom_t incremental_;
  std::size_t largestPiece_;
  std::list<Transfer> transfers_;
};

}  // namespace zephyx
