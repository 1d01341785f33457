#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "Platform/Linux/Clipboard/CopyReader.h"
#include "Platform/Linux/Clipboard/TargetSaver.h"

namespace zephyx {

/// The copies that other programs have made, each read on its own and handed out in their order;
/// and questions about the newest one. Used by the connection's thread.
class CopyQueue {
 public:
  /// `owner` is who owned the clipboard when the server's words about changes began.
  CopyQueue(const ClipboardReading& reading, xcb_window_t owner);

  void setPlan(std::shared_ptr<const PasteboardReadPlan> plan) { plan_ = std::move(plan); }
  /// Goes on where a queue ended whose connection broke: its plan and its numbers hold.
  void resume(const CopyQueue& former, std::uint64_t ownWritesSeen);

  xcb_window_t newestOwner() const { return newest_.owner; }
  void ownerChanged(const OwnerChange& change, std::uint64_t ownWritesSeen);
  /// Asks about what was announced. Call it when no event is left: a copy that has already been
  /// followed by another one needs no question.
  void startReading();
  /// Those that are finished and have no unfinished one before them, oldest first.
  std::vector<CopySnapshot> takeFinished();

  /// Fetches everything of the newest copy; nothing when the clipboard is empty or the host's own.
  void save(std::uint64_t question);
  /// What was saved, once every copy that was made until then has been taken, or has had as long as
  /// the saving itself.
  std::vector<SavedCopy> takeSaved();
  /// What has been saved so far, for every question that is open.
  std::vector<SavedCopy> giveUpSaving();
  /// When `takeSaved` has something to give even though nothing has arrived.
  std::optional<ClipboardClock::time_point> nextDeadline() const;

  using FetchCompletion = std::function<void(std::optional<SelectionPayload>)>;
  /// Gives nothing unless the copy is still the newest contents. `completion` is dropped uncalled
  /// when the queue goes first.
  void fetch(std::uint64_t number, const TypeOffer& offer, FetchCompletion completion);

  using SnapshotCompletion = std::function<void(CopySnapshot)>;
  /// The types of what was there before the first announcement.
  void readUnannounced(SnapshotCompletion completion);

 private:
  struct Waiting {
    std::shared_ptr<CopyReader> reader;
    SnapshotCompletion completion;
  };

  struct Saving {
    std::uint64_t question;
    std::shared_ptr<TargetSaver> saver;
  };

  bool isNewest(std::uint64_t number) const;

  const ClipboardReading& reading_;
  OwnerChange newest_;
  std::uint64_t newestNumber_ = 0;
  std::shared_ptr<const PasteboardReadPlan> plan_ = std::make_shared<PasteboardReadPlan>();
  std::deque<std::shared_ptr<CopyReader>> copies_;
  std::vector<Waiting> waiting_;
  std::vector<Saving> savings_;
};

}  // namespace zephyx
