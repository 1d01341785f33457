#pragma once

#include <memory>
#include <vector>

#include "Platform/Linux/Clipboard/AtomNames.h"
#include "Platform/Linux/Clipboard/CopyQueue.h"
#include "Platform/Linux/Clipboard/SelectionReader.h"
#include "Platform/Linux/Clipboard/SelectionServer.h"
#include "Platform/Linux/X11.h"

namespace zephyx {

/// The clipboard's side of one connection: dispatches the server's events to those who read and
/// those who serve. Made on one thread, then used by another one only.
class ClipboardWorker {
 public:
  /// From now on the server tells about changes. Null without a server that does so.
  static std::unique_ptr<ClipboardWorker> make();

  /// Goes on where a worker ended whose connection broke: what the host had put on the clipboard is
  /// there again, unless somebody has copied since.
  void resume(const ClipboardWorker& former);

  bool isConnected() const { return connection_->isValid(); }
  CopyQueue& copies() { return copies_; }

  /// Takes the clipboard over, or the selection that terminals paste.
  void own(std::shared_ptr<const OwnedContents> contents, std::uint64_t writeNumber,
           std::function<void(bool isOwner)> done);
  void ownPrimary(std::shared_ptr<const OwnedContents> contents,
                  std::function<void(bool isOwner)> done);

  /// Takes the text that is selected in the program of `window` as if that program had copied it.
  /// Nothing happens when none is, or when the program does not answer at once.
  void takeSelectedText(xcb_window_t window);

  /// Handles what has arrived and what has become due; returns what is to be told.
  std::vector<ClipboardNews> step();
  /// Sleeps until something arrives, something is due, or `descriptor` becomes readable.
  void wait(int descriptor);

 private:
  explicit ClipboardWorker(std::unique_ptr<X11Connection> connection);

  void handle(const xcb_generic_event_t& event);
  void handleOwnerEvent(const xcb_generic_event_t& event);
  std::vector<ClipboardNews> takeNews();
  int millisecondsToWait() const;

  std::unique_ptr<X11Connection> connection_;
  xcb_atom_t clipboard_;
  std::uint8_t ownerEvent_;
  AtomNames names_;
  SelectionServer server_;
  SelectionReader reader_;
  ClipboardReading reading_;
  CopyQueue copies_;
  SelectionReader primaryReader_;
  ClipboardReading primaryReading_;
  std::vector<CopySnapshot> selectedTexts_;
  std::uint64_t ownWritesSeen_ = 0;
  XReply<xcb_generic_event_t> nextEvent_;
};

}  // namespace zephyx
