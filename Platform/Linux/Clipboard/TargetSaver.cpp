#include "Platform/Linux/Clipboard/TargetSaver.h"

#include <algorithm>
#include <utility>

namespace zephyx {
namespace {

using namespace std::chrono_literals;
using Outcome = ConversionAnswer::Outcome;

constexpr auto silencePatience = 1s;
constexpr auto wholePatience = 2s;  // programs that encode a large picture for the asker
constexpr std::size_t mostBytes = 128u << 20;

}  // namespace

TargetSaver::TargetSaver(const ClipboardReading& reading, const OwnerChange& copy)
    : reading_(reading),
      copy_(copy),
      end_(ClipboardClock::now() + wholePatience),
      bytesLeft_(mostBytes) {}

void TargetSaver::start() {
  if (copy_.isOwn || copy_.owner == XCB_NONE) {
    isFinished_ = true;
    return;
  }
  fetchTargetNames(reading_, copy_,
                   [self = shared_from_this()](const std::vector<std::string>& names, bool) {
                     self->names_ = targetsWorthSaving(names);
                     std::reverse(self->names_.begin(), self->names_.end());
                     self->saveNext();
                   });
}

void TargetSaver::saveNext() {
  const auto left = end_ - ClipboardClock::now();
  if (names_.empty() || isSuperseded_ || left <= 0s) {
    isFinished_ = true;
    return;
  }
  reading_.selection.convert(
      {.target = reading_.connection.atom(names_.back()),
       .time = copy_.time,
       .owner = copy_.owner,
       .maximumBytes = bytesLeft_,
       .patience = std::min<ClipboardClock::duration>(left, silencePatience),
       .longest = left,
       .container = Bytes()},
      [self = shared_from_this()](ConversionAnswer answer) { self->save(std::move(answer)); });
}

void TargetSaver::save(ConversionAnswer answer) {
  const auto name = std::move(names_.back());
  names_.pop_back();
  if (answer.outcome == Outcome::Late || answer.outcome == Outcome::Lost) names_.clear();
  auto* data = std::get_if<Bytes>(&answer.payload);
  const auto type = reading_.names.names({&answer.type, 1});
  const bool isWhole = answer.outcome == Outcome::Answered && data && !type.empty() &&
                       data->size() % (std::max<std::size_t>(answer.format, 8) / 8) == 0;
  if (isWhole) {
    bytesLeft_ -= data->size();
    data->shrink_to_fit();
    targets_.push_back({name, type.front(), std::max<std::uint8_t>(answer.format, 8),
                        std::make_shared<const Bytes>(std::move(*data))});
  }
  saveNext();
}

std::shared_ptr<const SavedTargets> TargetSaver::takeTargets() {
  return std::make_shared<const SavedTargets>(std::move(targets_));
}

}  // namespace zephyx
