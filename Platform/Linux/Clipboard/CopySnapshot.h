#pragma once

#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <variant>

#include "Platform/Linux/Clipboard/SavedTargets.h"
#include "Platform/Linux/Clipboard/SelectionPayload.h"
#include "Platform/Linux/Clipboard/TargetNames.h"

namespace zephyx {

/// The number of a text that is only selected: the clipboard has still what it had before.
inline constexpr auto notOnTheClipboard = std::numeric_limits<std::uint64_t>::max();

/// What was learnt of one copy while it was the newest.
struct CopySnapshot {
  std::uint64_t number = 0;         ///< grows with each copy of another program
  std::uint64_t ownWritesSeen = 0;  ///< the last own write that had taken the selection before
  int process = 0;                  ///< of the owner; 0 when unknown
  TypeOffers offers;
  std::map<std::string, SelectionPayload> payloads;  ///< by type
  std::set<std::string> unavailable;                 ///< types that were asked for in vain
  bool isOwnerSilent = false;                        ///< it left a question unanswered
};

/// The answer to a wish to have everything that was on the clipboard.
struct SavedCopy {
  std::uint64_t question = 0;
  std::shared_ptr<const SavedTargets> targets;
};

using ClipboardNews = std::variant<CopySnapshot, SavedCopy>;

}  // namespace zephyx
