#include "Runner/ClipboardWriter.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Image.h"
#include "Platform/Pasteboard.h"
#include "Platform/Platform.h"
#include "Runner/Url.h"

namespace zephyx {
namespace {

struct Entry {
  std::string type = "text";
  std::optional<std::string> text;
  std::optional<std::string> filePath;
  std::optional<std::string> imageBlobPath;
  bool plainText = false;
};

std::optional<std::string> stringOf(const Map& map, const char* key) {
  const auto* value = map.find(key);
  const auto* text = value ? value->asString() : nullptr;
  return text ? std::optional(*text) : std::nullopt;
}

Entry parse(const Map& map) {
  Entry entry;
  entry.type = stringOf(map, "type").value_or("text");
  entry.text = stringOf(map, "text");
  entry.filePath = stringOf(map, "filePath");
  entry.imageBlobPath = stringOf(map, "imageBlobPath");
  const auto* plainText = map.find("plainText");
  entry.plainText = plainText && plainText->asBool().value_or(false);
  return entry;
}

std::int64_t write(Pasteboard& pasteboard, const Entry& entry, const Image* image) {
  pasteboard.clearContents();
  const auto fileUrl = entry.type == "file" && entry.filePath
                           ? Url::parse("file://" + percentEncodedPath(*entry.filePath))
                           : std::nullopt;
  if (fileUrl) {
    pasteboard.writeUrl(fileUrl->text);
  } else if (image) {
    pasteboard.writeImage(*image);
  } else if (entry.text) {
    pasteboard.writeString(*entry.text);
    const auto url =
        entry.type == "url" && !entry.plainText ? Url::parse(*entry.text) : std::nullopt;
    if (url) pasteboard.writeUrl(url->text);
  }
  return pasteboard.changeCount();
}

}  // namespace

void writeClipboardEntry(Platform& platform, const Map& map,
                         std::function<void(std::int64_t changeCount)> done) {
  auto entry = parse(map);
  auto& pasteboard = platform.pasteboard();
  if (entry.type != "image" || !entry.imageBlobPath) {
    done(write(pasteboard, entry, nullptr));
    return;
  }
  platform.dispatch().globalQueue().async([&mainQueue = platform.dispatch().mainQueue(),
                                           &images = platform.images(), &pasteboard,
                                           entry = std::move(entry),
                                           done = std::move(done)]() mutable {
    auto image = images.decodeFile(*entry.imageBlobPath);
    mainQueue.async([&pasteboard, entry = std::move(entry), done = std::move(done),
                     image = std::move(image)] { done(write(pasteboard, entry, image.get())); });
  });
}

}  // namespace zephyx
