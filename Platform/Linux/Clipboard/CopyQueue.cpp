#include "Platform/Linux/Clipboard/CopyQueue.h"

#include <algorithm>
#include <utility>

namespace zephyx {

CopyQueue::CopyQueue(const ClipboardReading& reading, xcb_window_t owner) : reading_(reading) {
  newest_.owner = owner;
}

void CopyQueue::resume(const CopyQueue& former, std::uint64_t ownWritesSeen) {
  plan_ = former.plan_;
  newestNumber_ = former.newestNumber_;
  // Made while nobody listened.
  const bool isNew = newest_.owner != XCB_NONE && newest_.owner != former.newest_.owner;
  if (isNew) ownerChanged(newest_, ownWritesSeen);
}

bool CopyQueue::isNewest(std::uint64_t number) const {
  return number == newestNumber_ && !newest_.isOwn && newest_.owner != XCB_NONE;
}

void CopyQueue::ownerChanged(const OwnerChange& change, std::uint64_t ownWritesSeen) {
  for (const auto& copy : copies_) copy->supersede();
  for (const auto& each : waiting_) each.reader->supersede();
  for (const auto& each : savings_) each.saver->supersede();
  reading_.selection.ownerChanged(change);
  newest_ = change;
  if (change.isOwn) return;
  CopySnapshot snapshot;
  snapshot.number = ++newestNumber_;
  snapshot.ownWritesSeen = ownWritesSeen;
  copies_.push_back(std::make_shared<CopyReader>(reading_, change, std::move(snapshot), plan_));
}

void CopyQueue::startReading() {
  for (const auto& copy : copies_) copy->start();
}

std::vector<CopySnapshot> CopyQueue::takeFinished() {
  for (std::size_t i = 0; i < waiting_.size();) {
    if (!waiting_[i].reader->isFinished()) {
      ++i;
      continue;
    }
    const auto done = std::move(waiting_[i]);
    waiting_.erase(waiting_.begin() + static_cast<std::ptrdiff_t>(i));
    done.completion(done.reader->takeSnapshot());
  }

  std::vector<CopySnapshot> finished;
  while (!copies_.empty() && copies_.front()->isFinished()) {
    finished.push_back(copies_.front()->takeSnapshot());
    copies_.pop_front();
  }
  return finished;
}

void CopyQueue::save(std::uint64_t question) {
  auto saver = std::make_shared<TargetSaver>(reading_, newest_);
  saver->start();
  savings_.push_back({question, std::move(saver)});
}

std::vector<SavedCopy> CopyQueue::takeSaved() {
  const auto now = ClipboardClock::now();
  std::vector<SavedCopy> saved;
  std::erase_if(savings_, [&](const Saving& each) {
    const bool isReady = each.saver->isFinished() && (copies_.empty() || each.saver->end() <= now);
    if (isReady) saved.push_back({each.question, each.saver->takeTargets()});
    return isReady;
  });
  return saved;
}

std::vector<SavedCopy> CopyQueue::giveUpSaving() {
  std::vector<SavedCopy> saved;
  for (const auto& each : std::exchange(savings_, {}))
    saved.push_back({each.question, each.saver->takeTargets()});
  return saved;
}

std::optional<ClipboardClock::time_point> CopyQueue::nextDeadline() const {
  std::optional<ClipboardClock::time_point> next;
  for (const auto& each : savings_) {
    if (!each.saver->isFinished()) continue;
    next = next ? std::min(*next, each.saver->end()) : each.saver->end();
  }
  return next;
}

void CopyQueue::fetch(std::uint64_t number, const TypeOffer& offer, FetchCompletion completion) {
  if (!isNewest(number)) return completion(std::nullopt);
  fetchType(reading_, newest_, offer, [completion = std::move(completion)](FetchedType fetched) {
    completion(std::move(fetched.payload));
  });
}

void CopyQueue::readUnannounced(SnapshotCompletion completion) {
  if (!isNewest(0)) return completion({});
  auto reader = std::make_shared<CopyReader>(reading_, newest_, CopySnapshot{},
                                             std::make_shared<PasteboardReadPlan>());
  reader->start();
  waiting_.push_back({std::move(reader), std::move(completion)});
}

}  // namespace zephyx
