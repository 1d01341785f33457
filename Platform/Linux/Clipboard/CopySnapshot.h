#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <string>

#include "Platform/Linux/Clipboard/SelectionPayload.h"
#include "Platform/Linux/Clipboard/TargetNames.h"

namespace zephyx {

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

}  // namespace zephyx
