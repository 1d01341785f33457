#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <vector>

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

/// Asks the owner of `copy` for the names of its targets; none when it does not answer.
void fetchTargetNames(
    const ClipboardReading& reading, const OwnerChange& copy,
    std::function<void(std::vector<std::string> names, bool isOwnerSilent)> completion);

struct FetchedType {
  std::optional<SelectionPayload> payload;  ///< never empty data
  bool isOwnerSilent = false;  ///< it did not answer, so there is no point in asking on
};

struct FetchPatience {
  ClipboardClock::duration silence = std::chrono::seconds(3);
  ClipboardClock::duration whole = std::chrono::seconds(10);  ///< of one target
};

/// Asks the owner of `copy` for one type: its targets, one after the other, until one gives
/// something. Text arrives as valid UTF-8. `completion` is called once, never inside this call.
void fetchType(const ClipboardReading& reading, const OwnerChange& copy, TypeOffer offer,
               std::function<void(FetchedType)> completion, FetchPatience patience = {});

}  // namespace zephyx
