#include "Platform/Linux/Clipboard/TypeFetch.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "Platform/Linux/Clipboard/SelectionText.h"

namespace zephyx {
namespace {

using Outcome = ConversionAnswer::Outcome;

constexpr std::chrono::seconds namesPatience(1);
constexpr std::size_t mostNamesBytes = 64 * 1024;
constexpr std::size_t mostTargets = 1024;
constexpr std::size_t mostDataBytes = 64u << 20;

std::vector<xcb_atom_t> atomsOf(const ConversionAnswer& answer) {
  if (answer.outcome != Outcome::Answered || answer.format != 32) return {};
  const auto bytes = viewOf(answer.payload);
  std::vector<xcb_atom_t> atoms(std::min(bytes.size() / sizeof(xcb_atom_t), mostTargets));
  if (!atoms.empty()) std::memcpy(atoms.data(), bytes.data(), atoms.size() * sizeof(xcb_atom_t));
  return atoms;
}

bool isSilent(const ConversionAnswer& answer) {
  return answer.outcome == Outcome::Late || answer.outcome == Outcome::Lost;
}

std::optional<SelectionPayload> usable(const TypeOffer& offer, const std::string& target,
                                       ConversionAnswer answer) {
  if (answer.outcome != Outcome::Answered || sizeOf(answer.payload) == 0) return std::nullopt;
  auto* raw = std::get_if<std::string>(&answer.payload);
  if (!offer.isText || !raw) return std::move(answer.payload);
  auto text = selectionText(target, std::move(*raw));
  if (!text) return std::nullopt;
  return SelectionPayload(std::move(*text));
}

void fetchTarget(const ClipboardReading& reading, const OwnerChange& copy, TypeOffer offer,
                 std::size_t index, FetchPatience patience,
                 std::function<void(FetchedType)> completion) {
  ConversionRequest request{.target = reading.connection.atom(offer.targets[index]),
                            .time = copy.time,
                            .owner = copy.owner,
                            .maximumBytes = mostDataBytes,
                            .patience = patience.silence,
                            .longest = patience.whole,
                            .container = {}};
  if (!offer.isText) request.container = Bytes();
  reading.selection.convert(std::move(request),
                            [&reading, copy, offer = std::move(offer), index, patience,
                             completion = std::move(completion)](ConversionAnswer answer) {
                              const bool isOwnerSilent = isSilent(answer);
                              auto payload = usable(offer, offer.targets[index], std::move(answer));
                              if (payload || isOwnerSilent || index + 1 == offer.targets.size()) {
                                return completion({std::move(payload), isOwnerSilent});
                              }
                              fetchTarget(reading, copy, offer, index + 1, patience, completion);
                            });
}

}  // namespace

void fetchTargetNames(
    const ClipboardReading& reading, const OwnerChange& copy,
    std::function<void(std::vector<std::string> names, bool isOwnerSilent)> completion) {
  reading.selection.convert(
      {.target = reading.connection.atom("TARGETS"),
       .time = copy.time,
       .owner = copy.owner,
       .maximumBytes = mostNamesBytes,
       .patience = namesPatience,
       .container = Bytes()},
      [&reading, completion = std::move(completion)](const ConversionAnswer& answer) {
        completion(reading.names.names(atomsOf(answer)), isSilent(answer));
      });
}

void fetchType(const ClipboardReading& reading, const OwnerChange& copy, TypeOffer offer,
               std::function<void(FetchedType)> completion, FetchPatience patience) {
  fetchTarget(reading, copy, std::move(offer), 0, patience, std::move(completion));
}

}  // namespace zephyx
