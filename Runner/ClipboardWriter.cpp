#include "Runner/ClipboardWriter.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Image.h"
#include "Platform/Pasteboard.h"
#include "Platform/Platform.h"
#include "Runner/Arguments.h"
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

std::optional<std::string> textOf(const Value& arguments, const char* key) {
  const auto* text = stringArgument(arguments, key);
  return text ? std::optional(*text) : std::nullopt;
}

Entry parse(const Value& arguments) {
  return {.type = textOf(arguments, "type").value_or("text"),
          .text = textOf(arguments, "text"),
          .filePath = textOf(arguments, "filePath"),
          .imageBlobPath = textOf(arguments, "imageBlobPath"),
          .plainText = boolArgument(arguments, "plainText").value_or(false)};
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

void writeClipboardEntry(Platform& platform, const Value& arguments,
                         std::function<void(std::int64_t changeCount)> done) {
  auto entry = parse(arguments);
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
