#pragma once

#include <cstdint>
#include <functional>

#include "Channel/Value.h"
#include "Platform/LifetimeGuard.h"

namespace zephyx {

class Platform;

/// Puts history entries back on the general pasteboard. Main thread.
class ClipboardWriter {
 public:
  /// `platform` outlives this object.
  explicit ClipboardWriter(Platform& platform) : platform_(platform) {}

  /// Writes an entry, a map: "type" ("text" when missing), "text", "filePath", "imageBlobPath",
  /// "plainText". A file or picture that cannot be had falls back to the text; without a text the
  /// pasteboard is left empty. `done` receives the change count once while this object lives:
  /// inside the call, except for a picture, which is read and decoded elsewhere first. A picture
  /// that is ready only after a later call is not written any more.
  void write(const Value& entry, std::function<void(std::int64_t changeCount)> done);

 private:
  Platform& platform_;
  std::uint64_t newest_ = 0;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
