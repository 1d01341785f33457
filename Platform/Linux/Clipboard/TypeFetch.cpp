#include "Platform/Linux/Clipboard/TypeFetch.h"

#include <chrono>
#include <string>
#include <utility>

#include "Platform/Linux/Clipboard/SelectionText.h"

namespace zephyx {
namespace {

using Outcome = ConversionAnswer::Outcome;

constexpr std::chrono::seconds dataPatience(3);
constexpr std::size_t mostDataBytes = 64u << 20;

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
                 std::size_t index, std::function<void(FetchedType)> completion) {
  ConversionRequest request{.target = reading.connection.atom(offer.targets[index]),
                            .time = copy.time,
                            .owner = copy.owner,
                            .maximumBytes = mostDataBytes,
                            .patience = dataPatience,
                            .container = {}};
  if (!offer.isText) request.container = Bytes();
  reading.selection.convert(
      std::move(request), [&reading, copy, offer = std::move(offer), index,
                           completion = std::move(completion)](ConversionAnswer answer) {
        const bool isSilent = answer.outcome == Outcome::Late || answer.outcome == Outcome::Lost;
        auto payload = usable(offer, offer.targets[index], std::move(answer));
        if (payload || isSilent || index + 1 == offer.targets.size()) {
          return completion({std::move(payload), isSilent});
        }
        fetchTarget(reading, copy, offer, index + 1, completion);
      });
}

}  // namespace

void fetchType(const ClipboardReading& reading, const OwnerChange& copy, TypeOffer offer,
               std::function<void(FetchedType)> completion) {
  fetchTarget(reading, copy, std::move(offer), 0, std::move(completion));
}

}  // namespace zephyx
