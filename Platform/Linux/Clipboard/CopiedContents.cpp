#include "Platform/Linux/Clipboard/CopiedContents.h"

#include <utility>

namespace zephyx {
namespace {

constexpr std::size_t largeData = 1u << 20;

}  // namespace

CopiedContents::CopiedContents(std::weak_ptr<ClipboardThread> thread,
                               ApplicationForProcess applicationForProcess, CopySnapshot snapshot)
    : thread_(std::move(thread)),
      applicationForProcess_(std::move(applicationForProcess)),
      snapshot_(std::move(snapshot)) {}

CopiedContents::CopiedContents(std::weak_ptr<ClipboardThread> thread,
                               ApplicationForProcess applicationForProcess)
    : thread_(std::move(thread)), applicationForProcess_(std::move(applicationForProcess)) {}

void CopiedContents::look() const {
  {
    const std::lock_guard lock(mutex_);
    if (snapshot_) return;
  }
  const auto thread = thread_.lock();
  auto snapshot = thread ? thread->readUnannounced() : CopySnapshot{};
  const std::lock_guard lock(mutex_);
  if (!snapshot_) snapshot_ = std::move(snapshot);
}

std::vector<std::string> CopiedContents::types() const {
  look();
  const std::lock_guard lock(mutex_);
  std::vector<std::string> types;
  types.reserve(snapshot_->offers.size());
  for (const auto& offer : snapshot_->offers) types.push_back(offer.type);
  return types;
}

std::optional<SelectionPayload> CopiedContents::payload(const std::string& type) const {
  look();
  TypeOffer offer;
  std::uint64_t number = 0;
  {
    const std::lock_guard lock(mutex_);
    const auto fetched = snapshot_->payloads.find(type);
    if (fetched != snapshot_->payloads.end()) {
      if (sizeOf(fetched->second) < largeData) return fetched->second;
      auto taken = snapshot_->payloads.extract(fetched);
      return std::move(taken.mapped());
    }
    const auto* offered = findOffer(snapshot_->offers, type);
    if (!offered || snapshot_->isOwnerSilent || snapshot_->unavailable.contains(type)) {
      return std::nullopt;
    }
    offer = *offered;
    number = snapshot_->number;
  }
  const auto thread = thread_.lock();
  return thread ? thread->fetch(number, offer) : std::nullopt;
}

std::optional<Bytes> CopiedContents::data(const std::string& type) const {
  auto found = payload(type);
  if (!found) return std::nullopt;
  if (auto* bytes = std::get_if<Bytes>(&*found)) return std::move(*bytes);
  const auto view = viewOf(*found);
  return Bytes(view.begin(), view.end());
}

std::optional<std::string> CopiedContents::string(const std::string& type) const {
  auto found = payload(type);
  if (!found) return std::nullopt;
  if (auto* text = std::get_if<std::string>(&*found)) return std::move(*text);
  const auto view = viewOf(*found);
  return std::string(view.begin(), view.end());
}

std::shared_ptr<RunningApplication> CopiedContents::source() const {
  look();
  int process = 0;
  {
    const std::lock_guard lock(mutex_);
    process = snapshot_->process;
  }
  return process > 0 && applicationForProcess_ ? applicationForProcess_(process) : nullptr;
}

}  // namespace zephyx
