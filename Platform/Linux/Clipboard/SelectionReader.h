#pragma once

#include <deque>
#include <functional>
#include <list>
#include <optional>
#include <vector>

#include "Platform/Linux/Clipboard/IncomingTransfer.h"
#include "Platform/Linux/Clipboard/OwnerChange.h"

namespace zephyx {

/// Asks the owner of one selection for targets, several at a time, and hands each answer to the one
/// who asked. An answer that might stem from another copy than the one that was asked about is
/// reported as lost. Used by the connection's thread; never waits for an owner.
class SelectionReader {
 public:
  using Completion = std::function<void(ConversionAnswer)>;

  SelectionReader(xcb_connection_t* connection, xcb_window_t root, xcb_atom_t selection,
                  xcb_atom_t incremental, xcb_atom_t property);
  SelectionReader(const SelectionReader&) = delete;
  SelectionReader& operator=(const SelectionReader&) = delete;
  ~SelectionReader();

  /// `completion` is called once, never inside this call; not at all when the reader goes first.
  void convert(ConversionRequest request, Completion completion);

  void handle(const xcb_selection_notify_event_t& event);
  void handle(const xcb_property_notify_event_t& event);
  void ownerChanged(const OwnerChange& change);
  /// `owner`'s connection has ended: it answers no more.
  void ownerEnded(xcb_window_t owner);

  void expire(ClipboardClock::time_point now);
  std::optional<ClipboardClock::time_point> nextDeadline() const;

 private:
  struct Conversion {
    IncomingTransfer transfer;
    Completion completion;
  };
  using Conversions = std::list<Conversion>;

  ConversionSlot takeSlot();
  void complete(Conversions::iterator conversion, ConversionAnswer answer);
  void abandon(Conversions::iterator conversion, ConversionAnswer::Outcome outcome);
  void abandonWhere(const std::function<bool(const IncomingTransfer&)>& condition,
                    ConversionAnswer::Outcome outcome);
  void limitMemory();
  void retire(ConversionSlot slot);
  void handleLateAnswer(const xcb_selection_notify_event_t& event);

  xcb_connection_t* connection_;
  xcb_window_t root_;
  xcb_atom_t selection_;
  xcb_atom_t incremental_;
  xcb_atom_t property_;
  Conversions conversions_;
  std::vector<ConversionSlot> freeSlots_;
  std::deque<ConversionSlot> retiredSlots_;  // an owner may still write to them
};

}  // namespace zephyx
