#pragma once

#include <xcb/res.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Linux/Clipboard/CopySnapshot.h"
#include "Platform/Linux/Clipboard/TypeFetch.h"
#include "Platform/Pasteboard.h"

namespace zephyx {

/// Learns of one copy: its types, and the first data that the plan prefers. Asks nothing more once
/// a newer copy has been made. Used by the connection's thread.
class CopyReader : public std::enable_shared_from_this<CopyReader> {
 public:
  CopyReader(const ClipboardReading& reading, const OwnerChange& copy, CopySnapshot snapshot,
             std::shared_ptr<const PasteboardReadPlan> plan);

  /// Does nothing when it was called before.
  void start();
  void supersede() { isSuperseded_ = true; }
  bool isFinished() const { return isFinished_; }
  /// Once, when it is finished.
  CopySnapshot takeSnapshot() { return std::move(snapshot_); }

 private:
  void askForProcess();
  void askForTypes();
  void learnTypes(const std::vector<std::string>& names, bool isOwnerSilent);
  void learnUriList(FetchedType uriList);
  void fetchPreferred(std::size_t first);
  bool isForbidden() const;
  void finish();

  const ClipboardReading& reading_;
  OwnerChange copy_;
  CopySnapshot snapshot_;
  std::shared_ptr<const PasteboardReadPlan> plan_;
  std::optional<xcb_res_query_client_ids_cookie_t> processQuestion_;
  bool isStarted_ = false;
  bool isSuperseded_ = false;
  bool isFinished_ = false;
};

}  // namespace zephyx
