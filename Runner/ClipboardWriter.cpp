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

std::int64_t writeEntry(Pasteboard& pasteboard, const Entry& entry, const Image* image) {
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

void ClipboardWriter::write(const Value& arguments,
                            std::function<void(std::int64_t changeCount)> done) {
  auto entry = parse(arguments);
  auto& pasteboard = platform_.pasteboard();
  const auto number = ++newest_;
  if (entry.type != "image" || !entry.imageBlobPath) {
    done(writeEntry(pasteboard, entry, nullptr));
    return;
  }
  auto finish = lifetime_.wrap([this, number, &pasteboard, entry,
                                done = std::move(done)](const std::shared_ptr<Image>& image) {
    done(number == newest_ ? writeEntry(pasteboard, entry, image.get()) : pasteboard.changeCount());
  });
  platform_.dispatch().globalQueue().async(
      [&mainQueue = platform_.dispatch().mainQueue(), &images = platform_.images(),
       path = *entry.imageBlobPath, finish = std::move(finish)]() mutable {
        mainQueue.async([image = images.decodeFile(path), finish = std::move(finish)]() mutable {
          finish(image);
        });
      });
}

}  // namespace zephyx
