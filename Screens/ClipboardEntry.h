#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "Channel/Value.h"

namespace zephyx {

/// One copy in the history, without the whole of its text.
struct ClipboardEntry {
  std::int64_t id = 0;  ///< grows with each copy
  std::string kind;     ///< "text", "url", "image" or "file"
  std::string preview;  ///< the beginning of the text
  std::int64_t textBytes = 0;
  std::optional<std::string> filePath;
  std::optional<std::string> imageBlobPath;
  std::optional<std::string> thumbnailPath;
  std::optional<std::int64_t> byteSize;
  std::optional<std::int64_t> width;
  std::optional<std::int64_t> height;
  std::optional<std::string> sourceAppName;
  std::optional<std::string> sourceAppBundleId;
  std::optional<std::string> sourceAppIconPath;
  std::int64_t copiedAtEpochMs = 0;
  bool pinned = false;

  /// The preview is the whole text.
  bool isWhole() const { return textBytes == static_cast<std::int64_t>(preview.size()); }
};

/// A copy as the host announces it.
struct CapturedEntry {
  ClipboardEntry entry;
  std::string text;

  /// Nothing when the message is not a map or names no type. Fields of a wrong kind count as
  /// missing.
  static std::optional<CapturedEntry> fromMessage(Value message);
};

/// What the list is narrowed to. Empty members do not narrow.
struct ClipboardQuery {
  std::string text;  ///< part of the text, file path or program name, in any case
  std::string kind;
  bool pinnedOnly = false;
  bool operator==(const ClipboardQuery&) const = default;
};

}  // namespace zephyx
