#include "Platform/Linux/Clipboard/SavedTargets.h"

#include <algorithm>
#include <utility>

#include "Platform/Linux/Clipboard/SelectionText.h"
#include "Platform/Pasteboard.h"

namespace zephyx {

SavedTargets::SavedTargets(std::vector<SavedTarget> targets) : targets_(std::move(targets)) {
  std::vector<std::string> names;
  names.reserve(targets_.size());
  for (const auto& target : targets_) names.push_back(target.name);
  offers_ = typeOffers(names);
  std::string type;
  if (const auto url = data(selectionTarget::uriList)) {
    const bool isFile = isLocalFileUrl(std::string(url->begin(), url->end()));
    type = isFile ? pasteboardType::fileUrl : pasteboardType::url;
  }
  nameUriList(offers_, type);
}

const SavedTarget* SavedTargets::find(const std::string& name) const {
  const auto found = std::find_if(targets_.begin(), targets_.end(),
                                  [&](const SavedTarget& each) { return each.name == name; });
  return found == targets_.end() ? nullptr : &*found;
}

std::vector<std::string> SavedTargets::types() const {
  std::vector<std::string> types;
  types.reserve(offers_.size());
  for (const auto& offer : offers_) types.push_back(offer.type);
  return types;
}

std::optional<Bytes> SavedTargets::data(const std::string& type) const {
  const auto* offer = findOffer(offers_, type);
  if (!offer) return std::nullopt;
  for (const auto& name : offer->targets) {
    const auto& raw = *find(name)->data;
    if (raw.empty()) continue;
    if (!offer->isText) return raw;
    if (const auto text = selectionText(name, std::string(raw.begin(), raw.end()))) {
      return Bytes(text->begin(), text->end());
    }
  }
  return std::nullopt;
}

}  // namespace zephyx
