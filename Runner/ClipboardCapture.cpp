#include "Runner/ClipboardCapture.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <system_error>
#include <utility>

#include "Platform/Application.h"
#include "Platform/Directories.h"
#include "Platform/Dispatch.h"
#include "Platform/Image.h"
#include "Platform/Platform.h"
#include "Platform/PrivateFile.h"
#include "Platform/Workspace.h"
#include "Runner/Url.h"
#include "Runner/Uuid.h"

namespace zephyx {
namespace {

constexpr const char* fallbackBundleId = "com.zephyx.app";
constexpr const char* universalClipboardName = "Universal Clipboard";
constexpr const char* universalClipboardBundleId = "com.apple.universalclipboard";
constexpr double thumbnailDimension = 240;

std::string supportFolder(Platform& platform) {
  auto& directories = platform.directories();
  const auto base = directories.applicationSupport().value_or(directories.home() +
                                                              "/Library/Application Support");
  const auto bundleId = platform.application().bundleIdentifier();
  return base + "/" + (bundleId.empty() ? fallbackBundleId : bundleId);
}

bool contains(const std::vector<std::string>& types, const char* type) {
  return std::find(types.begin(), types.end(), type) != types.end();
}

void addPixelSize(Map& entry, const Image& image) {
  entry.append("width", std::int64_t{image.pixelSize().wide});
  entry.append("height", std::int64_t{image.pixelSize().high});
}

}  // namespace

ClipboardCapture::ClipboardCapture(Platform& platform)
    : dispatch_(platform.dispatch()),
      images_(platform.images()),
      workspace_(platform.workspace()),
      blobsFolder_(supportFolder(platform) + "/clipboard_blobs"),
      thumbsFolder_(supportFolder(platform) + "/clipboard_thumbs"),
      iconsFolder_(supportFolder(platform) + "/clipboard_icons") {}

PasteboardReadPlan ClipboardCapture::readPlan() {
  return {.forbidden = {clipboardMark::concealed, clipboardMark::transient},
          .preferred = {pasteboardType::fileUrl, pasteboardType::png, pasteboardType::tiff,
                        pasteboardType::url, pasteboardType::string}};
}

std::optional<Map> ClipboardCapture::entry(const PasteboardContents& contents) const {
  const auto types = contents.types();
  const auto plan = readPlan();
  for (const auto& mark : plan.forbidden) {
    if (contains(types, mark.c_str())) return std::nullopt;
  }

  Map entry;
  entry.reserve(12);
  entry.append("copiedAtEpochMs", static_cast<std::int64_t>(dispatch_.wallClock() * 1000));
  const bool recorded = (contains(types, pasteboardType::fileUrl) && addFile(entry, contents)) ||
                        addImage(entry, contents, types) || addText(entry, contents, types);
  if (!recorded) return std::nullopt;
  addSource(entry, contents, types);
  return entry;
}

bool ClipboardCapture::addFile(Map& entry, const PasteboardContents& contents) const {
  const auto text = contents.string(pasteboardType::fileUrl);
  const auto url = text ? Url::parse(*text) : std::nullopt;
  if (!url || url->path.empty()) return false;

  entry.append("type", "file");
  std::filesystem::path path(url->path);
  if (!path.has_filename()) path = path.parent_path();  // a folder's URL ends in a slash
  entry.append("text", path.filename().string());
  entry.append("filePath", url->path);

  std::error_code error;
  const auto size = std::filesystem::file_size(url->path, error);
  if (!error) entry.append("byteSize", static_cast<std::int64_t>(size));
  if (const auto image = images_.decodeFile(url->path)) {
    addPixelSize(entry, *image);
    if (const auto thumbnail = writeThumbnail(image, makeUuid())) {
      entry.append("thumbnailPath", *thumbnail);
    }
  }
  return true;
}

bool ClipboardCapture::addImage(Map& entry, const PasteboardContents& contents,
                                const std::vector<std::string>& types) const {
  const char* type = contains(types, pasteboardType::png)    ? pasteboardType::png
                     : contains(types, pasteboardType::tiff) ? pasteboardType::tiff
                                                             : nullptr;
  if (!type) return false;
  const auto data = contents.data(type);
  const auto image = data ? images_.decode(*data) : nullptr;
  if (!image) return false;

  entry.append("type", "image");
  addPixelSize(entry, *image);
  const auto uuid = makeUuid();
  if (const auto png = image->pngRepresentation(); !png.empty()) {
    entry.append("byteSize", static_cast<std::int64_t>(png.size()));
    const auto path = blobsFolder_ + "/" + uuid + ".png";
    if (makePrivateFolder(blobsFolder_) && writePrivateFile(path, png)) {
      entry.append("imageBlobPath", path);
    }
  }
  if (const auto thumbnail = writeThumbnail(image, uuid)) {
    entry.append("thumbnailPath", *thumbnail);
  }
  return true;
}

bool ClipboardCapture::addText(Map& entry, const PasteboardContents& contents,
                               const std::vector<std::string>& types) const {
  std::optional<std::string> text;
  if (contains(types, pasteboardType::url)) text = contents.string(pasteboardType::url);
  if (!text) text = contents.string(pasteboardType::string);
  if (!text || text->empty()) return false;

  const bool isUrl =
      text->starts_with("http://") || text->starts_with("https://") || text->starts_with("ftp://");
  entry.append("type", isUrl ? "url" : "text");
  entry.append("text", std::move(*text));
  return true;
}

void ClipboardCapture::addSource(Map& entry, const PasteboardContents& contents,
                                 const std::vector<std::string>& types) const {
  auto application = contents.source();
  if (!application) application = workspace_.frontmostApplication();

  std::string name = universalClipboardName;
  std::string bundleId = universalClipboardBundleId;
  if (!contains(types, clipboardMark::remoteClipboard)) {
    name = application ? application->localizedName() : "";
    bundleId = application ? application->bundleIdentifier() : "";
  }
  if (!name.empty()) entry.append("sourceAppName", name);
  if (!bundleId.empty()) entry.append("sourceAppBundleId", bundleId);
  if (const auto icon = cacheAppIcon(bundleId, application.get())) {
    entry.append("sourceAppIconPath", *icon);
  }
}

std::optional<std::string> ClipboardCapture::cacheAppIcon(
    const std::string& bundleId, const RunningApplication* application) const {
  // The identifier becomes a file name: one that could leave the folder is no identifier.
  if (bundleId.empty() || bundleId.front() == '.' || bundleId.find('/') != std::string::npos) {
    return std::nullopt;
  }
  auto path = iconsFolder_ + "/" + bundleId + ".png";
  std::error_code error;
  if (std::filesystem::exists(path, error)) return path;
  const auto icon = application ? application->icon() : nullptr;
  if (!icon) return std::nullopt;
  const auto png = icon->pngRepresentation();
  if (png.empty() || !makePrivateFolder(iconsFolder_) || !writePrivateFile(path, png)) {
    return std::nullopt;
  }
  return path;
}

std::optional<std::string> ClipboardCapture::writeThumbnail(const std::shared_ptr<Image>& image,
                                                            const std::string& uuid) const {
  const auto thumbnail = thumbnailImage(image, thumbnailDimension);
  const auto png = thumbnail ? thumbnail->pngRepresentation() : Bytes{};
  auto path = thumbsFolder_ + "/" + uuid + "_thumb.png";
  if (png.empty() || !makePrivateFolder(thumbsFolder_) || !writePrivateFile(path, png)) {
    return std::nullopt;
  }
  return path;
}

std::shared_ptr<Image> ClipboardCapture::thumbnailImage(const std::shared_ptr<Image>& image,
                                                        double maxDimension) {
  const auto size = image->size();
  if (size.width <= 0 || size.height <= 0) return image;
  const double scale = maxDimension / std::max(size.width, size.height);
  if (scale >= 1) return image;
  return image->drawnAtSize({size.width * scale, size.height * scale});
}

}  // namespace zephyx
