#pragma once

#include <cstdint>
#include <functional>

#include "Channel/Value.h"

namespace zephyx {

class Platform;

/// Puts a history entry, a map, back on the general pasteboard: "type" ("text" when missing),
/// "text", "filePath", "imageBlobPath", "plainText". A file or picture that cannot be had falls
/// back to the text; without a text the pasteboard is left empty. `done` receives the new change
/// count on the main thread: inside the call, except for a picture, which is read and decoded
/// elsewhere first.
void writeClipboardEntry(Platform& platform, const Value& entry,
                         std::function<void(std::int64_t changeCount)> done);

}  // namespace zephyx
