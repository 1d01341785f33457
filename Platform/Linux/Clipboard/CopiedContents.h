#pragma once

#include <memory>
#include <mutex>

#include "Platform/Linux/Clipboard/ClipboardThread.h"
#include "Platform/Linux/Clipboard/CopySnapshot.h"
#include "Platform/Linux/Clipboard/OwnedContents.h"
#include "Platform/Pasteboard.h"

namespace zephyx {

/// What another program has copied. Answers from what was fetched when the copy was announced, and
/// asks the owner for the rest while it still owns the clipboard. Large data that were fetched are
/// handed to their first reader, so that they are not in memory twice; the next reader asks the
/// owner.
class CopiedContents final : public PasteboardContents {
 public:
  CopiedContents(std::weak_ptr<ClipboardThread> thread, ApplicationForProcess applicationForProcess,
                 CopySnapshot snapshot);
  /// What was there before the first announcement; looked at when somebody asks.
  CopiedContents(std::weak_ptr<ClipboardThread> thread,
                 ApplicationForProcess applicationForProcess);

  std::vector<std::string> types() const override;
  std::optional<Bytes> data(const std::string& type) const override;
  std::optional<std::string> string(const std::string& type) const override;
  std::shared_ptr<RunningApplication> source() const override;

 private:
  void look() const;
  std::optional<SelectionPayload> payload(const std::string& type) const;

  std::weak_ptr<ClipboardThread> thread_;
  ApplicationForProcess applicationForProcess_;
  mutable std::mutex mutex_;
  mutable std::optional<CopySnapshot> snapshot_;
};

}  // namespace zephyx
