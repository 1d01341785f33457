#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Channel/Value.h"
#include "Platform/Pasteboard.h"

namespace zephyx {

class Directories;
class Dispatch;
class Image;
class Images;
class Platform;
class RunningApplication;
class Workspace;

namespace clipboardMark {
inline constexpr const char* concealed = "org.nspasteboard.ConcealedType";
inline constexpr const char* transient = "org.nspasteboard.TransientType";
inline constexpr const char* remoteClipboard = "com.apple.is-remote-clipboard";
}  // namespace clipboardMark

/// Turns the contents of the pasteboard into a history entry, and keeps the pictures of entries and
/// the icons of their source applications as files. Any thread but the main one; its methods may
/// run at the same time.
class ClipboardCapture {
 public:
  explicit ClipboardCapture(Platform& platform);

  /// What an entry is made from, for systems that fetch ahead.
  static PasteboardReadPlan readPlan();

  /// The record of one entry, absent keys left out; nothing when there is nothing to record.
  std::optional<Map> entry(const PasteboardContents& contents) const;

  /// Whole picture, no larger than `maxDimension` points on its longer side; never enlarged.
  static std::shared_ptr<Image> thumbnailImage(const std::shared_ptr<Image>& image,
                                               double maxDimension);

 private:
  bool addFile(Map& entry, const PasteboardContents& contents) const;
  bool addImage(Map& entry, const PasteboardContents& contents,
                const std::vector<std::string>& types) const;
  bool addText(Map& entry, const PasteboardContents& contents,
               const std::vector<std::string>& types) const;
  void addSource(Map& entry, const PasteboardContents& contents,
                 const std::vector<std::string>& types) const;
  std::optional<std::string> cacheAppIcon(const std::string& bundleId,
                                          const RunningApplication* application) const;
  /// The path of the new thumbnail file.
  std::optional<std::string> writeThumbnail(const std::shared_ptr<Image>& image,
                                            const std::string& uuid) const;

  const Dispatch& dispatch_;
  const Images& images_;
  const Workspace& workspace_;
  const std::string blobsFolder_;
  const std::string thumbsFolder_;
  const std::string iconsFolder_;
};

}  // namespace zephyx
