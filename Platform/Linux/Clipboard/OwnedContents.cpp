#include "Platform/Linux/Clipboard/OwnedContents.h"

#include <unistd.h>

#include <algorithm>
#include <utility>

#include "Platform/Linux/Clipboard/SelectionText.h"
#include "Platform/Linux/Clipboard/TargetNames.h"

namespace zephyx {
namespace {

SharedBytes shared(const std::shared_ptr<const std::string>& text) {
  return {text, {reinterpret_cast<const std::uint8_t*>(text->data()), text->size()}};
}

SharedBytes shared(std::string text) {
  return shared(std::make_shared<const std::string>(std::move(text)));
}

int hexadecimalDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

std::string pathOf(const std::string& fileUrl) {
  constexpr std::string_view scheme = "file://";
  std::string path;
  for (std::size_t i = scheme.size(); i < fileUrl.size(); ++i) {
    const int high =
        fileUrl[i] == '%' && i + 2 < fileUrl.size() ? hexadecimalDigit(fileUrl[i + 1]) : -1;
    const int low = high >= 0 ? hexadecimalDigit(fileUrl[i + 2]) : -1;
    if (low >= 0) {
      path += static_cast<char>(high * 16 + low);
      i += 2;
    } else {
      path += fileUrl[i];
    }
  }
  return path;
}

}  // namespace

OwnedContents::OwnedContents(ApplicationForProcess applicationForProcess)
    : applicationForProcess_(std::move(applicationForProcess)) {}

std::shared_ptr<OwnedContents> OwnedContents::withString(const std::string& text) const {
  auto next = std::make_shared<OwnedContents>(*this);
  next->string_ = std::make_shared<const std::string>(withoutMalformedUtf8(text));
  return next;
}

std::shared_ptr<OwnedContents> OwnedContents::withUrl(const std::string& url) const {
  const bool isOneLine = std::none_of(url.begin(), url.end(), [](char c) {
    return static_cast<unsigned char>(c) < 0x20 || c == 0x7F;
  });
  if (url.empty() || !isOneLine) return nullptr;
  auto next = std::make_shared<OwnedContents>(*this);
  next->url_ = std::make_shared<const std::string>(withoutMalformedUtf8(url));
  if (!string_) {
    next->string_ =
        next->isFile()
            ? std::make_shared<const std::string>(withoutMalformedUtf8(pathOf(*next->url_)))
            : next->url_;
  }
  return next;
}

std::shared_ptr<OwnedContents> OwnedContents::withPng(Bytes png) const {
  auto next = std::make_shared<OwnedContents>(*this);
  next->png_ = std::make_shared<const Bytes>(std::move(png));
  return next;
}

bool OwnedContents::isFile() const {
  return url_ && isLocalFileUrl(*url_);
}

std::vector<std::string> OwnedContents::types() const {
  std::vector<std::string> types;
  if (url_) types.emplace_back(isFile() ? pasteboardType::fileUrl : pasteboardType::url);
  if (png_) types.emplace_back(pasteboardType::png);
  if (string_) types.emplace_back(pasteboardType::string);
  return types;
}

SharedBytes OwnedContents::sharedData(const std::string& type) const {
  if (type == pasteboardType::string && string_) return shared(string_);
  if (type == pasteboardType::png && png_) return {png_, *png_};
  if (url_ && type == (isFile() ? pasteboardType::fileUrl : pasteboardType::url)) {
    return shared(url_);
  }
  return {};
}

std::optional<Bytes> OwnedContents::data(const std::string& type) const {
  const auto found = sharedData(type);
  if (!found.keeper) return std::nullopt;
  return Bytes(found.bytes.begin(), found.bytes.end());
}

std::optional<std::string> OwnedContents::string(const std::string& type) const {
  const auto found = sharedData(type);
  if (!found.keeper) return std::nullopt;
  return std::string(found.bytes.begin(), found.bytes.end());
}

std::shared_ptr<RunningApplication> OwnedContents::source() const {
  return applicationForProcess_ ? applicationForProcess_(getpid()) : nullptr;
}

std::vector<std::string> OwnedContents::targets() const {
  std::vector<std::string> names;
  if (url_) {
    names.emplace_back(selectionTarget::uriList);
    names.emplace_back(isFile() ? selectionTarget::copiedFiles : selectionTarget::mozillaUrl);
  }
  if (png_) names.emplace_back(selectionTarget::png);
  if (string_) {
    names.insert(names.end(), {selectionTarget::utf8String, selectionTarget::utf8Text,
                               selectionTarget::plainText, selectionTarget::latin1String,
                               selectionTarget::anyText});
  }
  return names;
}

std::optional<OwnedContents::Target> OwnedContents::target(const std::string& name) const {
  const auto offered = targets();
  if (std::find(offered.begin(), offered.end(), name) == offered.end()) return std::nullopt;
  if (name == selectionTarget::png) return Target{name, {png_, *png_}};
  if (name == selectionTarget::uriList) return Target{name, shared(*url_ + "\r\n")};
  if (name == selectionTarget::copiedFiles) return Target{name, shared("copy\n" + *url_)};
  if (name == selectionTarget::mozillaUrl) {
    return Target{name, shared(utf16FromUtf8(*url_ + "\n" + *url_))};
  }
  if (name == selectionTarget::latin1String) return Target{name, shared(latin1FromUtf8(*string_))};
  if (name == selectionTarget::anyText) return Target{selectionTarget::utf8String, shared(string_)};
  return Target{name, shared(string_)};
}

}  // namespace zephyx
