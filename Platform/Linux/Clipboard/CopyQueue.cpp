#include "Platform/Linux/Clipboard/CopyQueue.h"

#include <utility>

namespace zephyx {

CopyQueue::CopyQueue(const ClipboardReading& reading, xcb_window_t owner, xcb_window_t ownWindow)
    : reading_(reading), ownWindow_(ownWindow) {
  newest_.owner = owner;
}

bool CopyQueue::isNewest(std::uint64_t number) const {
  return number == newestNumber_ && newest_.owner != ownWindow_ && newest_.owner != XCB_NONE;
}

void CopyQueue::ownerChanged(const OwnerChange& change, std::uint64_t ownWritesSeen) {
  for (const auto& copy : copies_) copy->supersede();
  for (const auto& each : waiting_) each.reader->supersede();
  reading_.selection.ownerChanged(change);
  newest_ = change;
  if (change.owner == ownWindow_) return;
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
