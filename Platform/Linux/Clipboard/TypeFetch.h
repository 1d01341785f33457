#pragma once

#include <functional>
#include <optional>

#include "Platform/Linux/Clipboard/AtomNames.h"
#include "Platform/Linux/Clipboard/OwnerChange.h"
#include "Platform/Linux/Clipboard/SelectionReader.h"
#include "Platform/Linux/Clipboard/TargetNames.h"
#include "Platform/Linux/X11.h"

namespace zephyx {

/// What the readers of one clipboard share. Used by the connection's thread.
struct ClipboardReading {
  X11Connection& connection;
  AtomNames& names;
  SelectionReader& selection;
};

struct FetchedType {
  std::optional<SelectionPayload> payload;  ///< never empty data
  bool isOwnerSilent = false;  ///< it did not answer, so there is no point in asking on
};

/// Asks the owner of `copy` for one type: its targets, one after the other, until one gives
/// something. Text arrives as valid UTF-8. `completion` is called once, never inside this call.
void fetchType(const ClipboardReading& reading, const OwnerChange& copy, TypeOffer offer,
               std::function<void(FetchedType)> completion);

}  // namespace zephyx
