#include <algorithm>
#include <set>
#include <string>

#include "Channel/Utf8.h"
#include "Platform/Linux/Clipboard/SavedTargets.h"
#include "Platform/Linux/Clipboard/SelectionText.h"
#include "Platform/Pasteboard.h"
#include "Tests/Fuzz/FuzzTargets.h"

namespace zephyx {
namespace {

/// In data, the byte 1E stands for a line feed.
std::vector<SavedTarget> targetsIn(std::string_view lines) {
  std::vector<SavedTarget> targets;
  while (!lines.empty()) {
    const auto line = lines.substr(0, lines.find('\n'));
    lines.remove_prefix(std::min(line.size() + 1, lines.size()));
    const auto name = line.substr(0, line.find('\t'));
    const auto data = line.substr(std::min(name.size() + 1, line.size()));
    auto bytes = std::make_shared<Bytes>(data.begin(), data.end());
    std::replace(bytes->begin(), bytes->end(), std::uint8_t{0x1E}, std::uint8_t{'\n'});
    targets.push_back({.name = std::string(name), .type = {}, .data = std::move(bytes)});
  }
  return targets;
}

bool isTextType(const std::string& type) {
  return type == pasteboardType::string || type == pasteboardType::url ||
         type == pasteboardType::fileUrl;
}

const char* brokenTextProperty(const SavedTarget& target) {
  const auto text = selectionText(target.name, {target.data->begin(), target.data->end()});
  if (!text) return nullptr;
  if (text->empty() || !isValidUtf8(*text)) return "text is valid and not empty";
  // A byte that is no character becomes a sign of three; "file:/" grows by two.
  if (text->size() > 3 * target.data->size() + 2) return "text takes little more than its data";
  if (utf16FromUtf8(*text).size() > 2 * text->size()) return "text has its size in UTF-16";
  if (latin1FromUtf8(*text).size() > text->size()) return "text has its size in Latin-1";
  return nullptr;
}

}  // namespace

const char* brokenClipboardProperty(BytesView bytes) {
  auto targets = targetsIn({reinterpret_cast<const char*>(bytes.data()), bytes.size()});
  std::vector<std::string> names;
  for (const auto& target : targets) {
    names.push_back(target.name);
    if (const char* broken = brokenTextProperty(target)) return broken;
  }
  const std::set<std::string> offered(names.begin(), names.end());
  const auto isOffered = [&](const std::string& name) { return offered.contains(name); };
  const auto worthSaving = targetsWorthSaving(names);
  if (!std::ranges::all_of(worthSaving, isOffered) ||
      std::set(worthSaving.begin(), worthSaving.end()).size() != worthSaving.size()) {
    return "what is saved was offered, and once";
  }
  std::set<std::string> types;
  for (const auto& offer : typeOffers(names)) {
    if (!types.insert(offer.type).second) return "each type is offered once";
    if (offer.targets.empty() || !std::ranges::all_of(offer.targets, isOffered)) {
      return "a type stands for targets that are there";
    }
    if (isTextType(offer.type) && !offer.isText) return "text is read as text";
  }
  if (isOffered(selectionTarget::passwordHint) && !types.contains(concealedType)) {
    return "a mark of a password manager is seen";
  }

  const SavedTargets saved(std::move(targets));
  for (const auto& type : saved.types()) {
    const auto data = saved.data(type);
    if (data && data->empty()) return "data are never empty";
    if (data && isTextType(type) &&
        !isValidUtf8({reinterpret_cast<const char*>(data->data()), data->size()})) {
      return "saved text is valid";
    }
  }
  return nullptr;
}

}  // namespace zephyx
