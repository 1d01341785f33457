#include "Platform/Linux/Clipboard/TargetNames.h"

#include <algorithm>
#include <array>
#include <optional>

#include "Platform/Pasteboard.h"

namespace zephyx {
namespace {

struct KnownTarget {
  std::string_view name;  // in lower case
  const char* type;
  int rank;  // of several targets with one type, the lowest is asked first
  bool isText = true;
};

constexpr std::array knownTargets{
    KnownTarget{"utf8_string", pasteboardType::string, 0},
    KnownTarget{"text/plain;charset=utf-8", pasteboardType::string, 1},
    KnownTarget{"text/plain", pasteboardType::string, 2},
    KnownTarget{"string", pasteboardType::string, 3},
    KnownTarget{"text/uri-list", selectionTarget::uriList, 0},
    KnownTarget{"x-special/gnome-copied-files", selectionTarget::uriList, 1},
    KnownTarget{"text/x-moz-url", pasteboardType::url, 0},
    KnownTarget{"_netscape_url", pasteboardType::url, 1},
    KnownTarget{"image/png", pasteboardType::png, 0, false},
    KnownTarget{"image/tiff", pasteboardType::tiff, 0, false},
    KnownTarget{"x-kde-passwordmanagerhint", concealedType, 0},
    KnownTarget{"text/x-kde-passwordmanagerhint", concealedType, 1},
    KnownTarget{"org.nspasteboard.concealedtype", concealedType, 2},
};

// Stand for a bitmap, in this order, when neither PNG nor TIFF is offered.
constexpr std::array<std::string_view, 4> otherBitmaps{"image/jpeg", "image/bmp", "image/webp",
                                                       "image/gif"};

// Ask the owner to do something, describe its window, or name what lives in the server or in its
// own memory: not contents.
constexpr std::array<std::string_view, 30> protocolTargets{"targets",
                                                           "multiple",
                                                           "timestamp",
                                                           "save_targets",
                                                           "delete",
                                                           "insert_selection",
                                                           "insert_property",
                                                           "incr",
                                                           "gtk_text_buffer_contents",
                                                           "client_window",
                                                           "length",
                                                           "list_length",
                                                           "character_position",
                                                           "line_number",
                                                           "column_number",
                                                           "span",
                                                           "host_name",
                                                           "hostname",
                                                           "ip_address",
                                                           "owner_os",
                                                           "user",
                                                           "name",
                                                           "class",
                                                           "process",
                                                           "task",
                                                           "pixmap",
                                                           "bitmap",
                                                           "drawable",
                                                           "colormap",
                                                           "procedure"};

// The kinds of bitmap that are worth keeping, the best one first.
constexpr std::array<std::string_view, 4> savedBitmaps{"image/png", "image/jpeg", "image/bmp",
                                                       "image/tiff"};

std::string lowerCase(std::string_view name) {
  std::string lower;
  lower.reserve(name.size());
  for (const char c : name) {
    if (c == ' ') continue;  // "text/plain; charset=utf-8"
    lower += c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
  }
  return lower;
}

template <typename List>
bool contains(const List& list, std::string_view name) {
  return std::find(list.begin(), list.end(), name) != list.end();
}

std::optional<KnownTarget> meaningOf(const std::string& lowerName, std::string_view standInBitmap) {
  for (const auto& known : knownTargets) {
    if (known.name == lowerName) return known;
  }
  if (!standInBitmap.empty() && lowerName == standInBitmap) {
    return KnownTarget{standInBitmap, pasteboardType::tiff, 0, false};
  }
  return std::nullopt;
}

// A target that is named as one of our types would pass for it, and be handed out undecoded.
bool isNamedAsType(std::string_view name) {
  return name == pasteboardType::fileUrl ||
         std::any_of(knownTargets.begin(), knownTargets.end(),
                     [name](const KnownTarget& known) { return name == known.type; });
}

std::string_view standInBitmap(const std::vector<std::string>& lowerNames) {
  if (contains(lowerNames, "image/png") || contains(lowerNames, "image/tiff")) return {};
  for (const auto bitmap : otherBitmaps) {
    if (contains(lowerNames, bitmap)) return bitmap;
  }
  return {};
}

bool isBitmap(std::string_view lowerName) {
  const bool isDrawing = lowerName.find("svg") != std::string_view::npos;
  return (lowerName.starts_with("image/") && !isDrawing) || lowerName == "application/x-qt-image";
}

// An offer while its targets are still being collected.
struct Candidate {
  TypeOffer offer;
  std::vector<int> ranks;

  void add(const std::string& target, int rank) {
    const auto place = std::upper_bound(ranks.begin(), ranks.end(), rank);
    offer.targets.insert(offer.targets.begin() + (place - ranks.begin()), target);
    ranks.insert(place, rank);
  }
};

}  // namespace

TypeOffers typeOffers(const std::vector<std::string>& targets) {
  std::vector<std::string> lowerNames;
  lowerNames.reserve(targets.size());
  for (const auto& target : targets) lowerNames.push_back(lowerCase(target));
  const auto bitmap = standInBitmap(lowerNames);

  std::vector<Candidate> meant;
  TypeOffers others;
  for (std::size_t i = 0; i < targets.size(); ++i) {
    if (contains(protocolTargets, lowerNames[i])) continue;
    const auto meaning = meaningOf(lowerNames[i], bitmap);
    if (!meaning) {
      if (!findOffer(others, targets[i]) && !isNamedAsType(targets[i])) {
        others.push_back({targets[i], {targets[i]}, false});
      }
      continue;
    }
    auto same = std::find_if(meant.begin(), meant.end(), [&](const Candidate& candidate) {
      return candidate.offer.type == meaning->type;
    });
    if (same == meant.end()) {
      meant.push_back({{meaning->type, {}, meaning->isText}, {}});
      same = meant.end() - 1;
    }
    same->add(targets[i], meaning->rank);
  }

  TypeOffers offers;
  offers.reserve(meant.size() + others.size());
  for (auto& candidate : meant) offers.push_back(std::move(candidate.offer));
  for (auto& other : others) offers.push_back(std::move(other));
  return offers;
}

std::vector<std::string> targetsWorthSaving(const std::vector<std::string>& targets) {
  std::vector<std::string> lowerNames;
  lowerNames.reserve(targets.size());
  for (const auto& target : targets) lowerNames.push_back(lowerCase(target));
  std::string_view bitmap;
  const auto choose = [&](std::string_view name) {
    if (bitmap.empty() && contains(lowerNames, name)) bitmap = name;
  };
  for (const auto name : savedBitmaps) choose(name);
  for (const auto& name : lowerNames) {
    if (isBitmap(name)) choose(name);
  }

  std::vector<std::string> saved;
  for (std::size_t i = 0; i < targets.size(); ++i) {
    if (contains(protocolTargets, lowerNames[i]) || contains(saved, targets[i])) continue;
    if (!isBitmap(lowerNames[i]) || lowerNames[i] == bitmap) saved.push_back(targets[i]);
  }
  return saved;
}

const TypeOffer* findOffer(const TypeOffers& offers, std::string_view type) {
  const auto found = std::find_if(offers.begin(), offers.end(),
                                  [&](const TypeOffer& offer) { return offer.type == type; });
  return found == offers.end() ? nullptr : &*found;
}

void nameUriList(TypeOffers& offers, const std::string& type) {
  const auto list = std::find_if(offers.begin(), offers.end(), [](const TypeOffer& offer) {
    return offer.type == selectionTarget::uriList;
  });
  if (list == offers.end()) return;
  const auto same = std::find_if(offers.begin(), offers.end(),
                                 [&](const TypeOffer& offer) { return offer.type == type; });
  if (type.empty()) {
    offers.erase(list);
  } else if (same != offers.end()) {
    same->targets.insert(same->targets.begin(), list->targets.begin(), list->targets.end());
    offers.erase(list);
  } else {
    list->type = type;
  }
}

}  // namespace zephyx
