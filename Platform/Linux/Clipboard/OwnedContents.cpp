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

bool contains(const std::vector<std::string>& names, const std::string& name) {
  return std::find(names.begin(), names.end(), name) != names.end();
}

void addMissing(std::vector<std::string>& names, const std::vector<std::string>& others) {
  for (const auto& other : others) {
    if (!contains(names, other)) names.push_back(other);
  }
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

std::shared_ptr<OwnedContents> OwnedContents::withSaved(
    std::shared_ptr<const SavedTargets> saved) const {
  auto next = std::make_shared<OwnedContents>(*this);
  next->saved_ = std::move(saved);
  return next;
}

std::shared_ptr<OwnedContents> OwnedContents::withOld(const OwnedContents& other) const {
  auto next = std::make_shared<OwnedContents>(*this);
  if (!string_) next->string_ = other.string_;
  if (!url_) next->url_ = other.url_;
  if (!png_) next->png_ = other.png_;
  if (!saved_) next->saved_ = other.saved_;
  next->isOld_ = true;
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
  if (saved_) addMissing(types, saved_->types());
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
  if (found.keeper) return Bytes(found.bytes.begin(), found.bytes.end());
  return saved_ ? saved_->data(type) : std::nullopt;
}

std::optional<std::string> OwnedContents::string(const std::string& type) const {
  const auto found = data(type);
  if (!found) return std::nullopt;
  return std::string(found->begin(), found->end());
}

std::shared_ptr<RunningApplication> OwnedContents::source() const {
  return applicationForProcess_ ? applicationForProcess_(getpid()) : nullptr;
}

std::vector<std::string> OwnedContents::writtenTargets() const {
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

std::vector<std::string> OwnedContents::targets() const {
  auto names = writtenTargets();
  if (saved_) {
    for (const auto& each : saved_->all()) addMissing(names, {each.name});
  }
  if (isOld_ && !names.empty()) addMissing(names, {selectionTarget::passwordHint});
  return names;
}

std::optional<OwnedContents::Target> OwnedContents::target(const std::string& name) const {
  if (contains(writtenTargets(), name)) return writtenTarget(name);
  if (const auto* found = saved_ ? saved_->find(name) : nullptr) {
    return Target{found->type, {found->data, *found->data}, found->format};
  }
  if (name != selectionTarget::passwordHint || !contains(targets(), name)) return std::nullopt;
  return Target{name, shared(std::string("secret"))};
}

OwnedContents::Target OwnedContents::writtenTarget(const std::string& name) const {
  if (name == selectionTarget::png) return {name, {png_, *png_}};
  if (name == selectionTarget::uriList) return {name, shared(*url_ + "\r\n")};
  if (name == selectionTarget::copiedFiles) return {name, shared("copy\n" + *url_)};
  if (name == selectionTarget::mozillaUrl) {
    return {name, shared(utf16FromUtf8(*url_ + "\n" + *url_))};
  }
  if (name == selectionTarget::latin1String) return {name, shared(latin1FromUtf8(*string_))};
  if (name == selectionTarget::anyText) return {selectionTarget::utf8String, shared(string_)};
  return {name, shared(string_)};
}

}  // namespace zephyx
