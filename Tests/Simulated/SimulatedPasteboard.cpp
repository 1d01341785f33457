#include "Tests/Simulated/SimulatedPasteboard.h"

#include <algorithm>

#include "Platform/Image.h"
#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedFaults.h"

namespace zephyx {
namespace {

using Owner = SimulatedPasteboard::Owner;
using Fetched = std::map<std::string, std::optional<Bytes>>;

std::vector<std::string> typesOf(const Owner& owner) {
  std::vector<std::string> types;
  if (owner.isGone) return types;
  for (const auto& [type, data] : owner.items) types.push_back(type);
  return types;
}

std::optional<Bytes> dataOf(const Owner& owner, const std::string& type) {
  if (owner.isGone || owner.refused.contains(type)) return std::nullopt;
  for (const auto& [offered, data] : owner.items) {
    if (offered == type && data.size() <= SimulatedPasteboard::readLimit) return data;
  }
  return std::nullopt;
}

bool contains(const std::vector<std::string>& list, const std::string& item) {
  return std::find(list.begin(), list.end(), item) != list.end();
}

/// What a system that announces changes fetches before it shows one.
Fetched fetch(const Owner& owner, const PasteboardReadPlan& plan) {
  Fetched fetched;
  const auto types = typesOf(owner);
  for (const auto& type : plan.forbidden) {
    if (contains(types, type)) return fetched;
  }
  for (const auto& type : plan.preferred) {
    if (!contains(types, type)) continue;
    fetched[type] = dataOf(owner, type);
    if (fetched[type]) break;
  }
  return fetched;
}

}  // namespace

struct SimulatedPasteboard::State {
  SimulatedDispatch& dispatch;
  SimulatedFaults& faults;
  std::shared_ptr<Owner> owner = std::make_shared<Owner>();  ///< who owns the pasteboard
  std::shared_ptr<Owner> shown = owner;                      ///< whose change is shown
  Fetched fetched;                                           ///< of `shown`
  std::int64_t changeCount = 40;
  bool announces = false;
  bool isOwnedByHost = false;
  PasteboardReadPlan plan;
  std::function<void()> observer;
  std::uint64_t observerId = 0;
  double busyUntil = 0;  ///< wall clock; the system asks one owner after the other

  /// Waits as long as the owner takes; false when that is too long.
  bool waitFor(const Owner& asked) const {
    if (asked.answerTime <= 0) return true;
    dispatch.waitOnGlobalQueue(std::min(asked.answerTime, readDeadline));
    return asked.answerTime <= readDeadline;
  }
};

/// The contents of one change.
class SimulatedPasteboard::Contents final : public PasteboardContents {
 public:
  Contents(std::shared_ptr<State> state, std::shared_ptr<Owner> owner, Fetched fetched)
      : state_(std::move(state)),
        owner_(std::move(owner)),
        types_(typesOf(*owner_)),
        fetched_(std::move(fetched)) {}

  std::vector<std::string> types() const override {
    state_->dispatch.forbidMainThread("PasteboardContents::types");
    if (state_->announces) return types_;
    const auto owner = state_->owner;
    return state_->waitFor(*owner) ? typesOf(*owner) : std::vector<std::string>{};
  }

  std::optional<Bytes> data(const std::string& type) const override {
    state_->dispatch.forbidMainThread("PasteboardContents::data");
    if (const auto found = fetched_.find(type); found != fetched_.end()) return found->second;
    const auto owner = state_->owner;
    if (state_->announces && owner != owner_) return std::nullopt;
    if (!state_->waitFor(*owner)) return std::nullopt;
    return dataOf(*owner, type);
  }

  std::optional<std::string> string(const std::string& type) const override {
    const auto bytes = data(type);
    if (!bytes) return std::nullopt;
    return std::string(bytes->begin(), bytes->end());
  }

  std::shared_ptr<RunningApplication> source() const override {
    return state_->announces ? owner_->source : nullptr;
  }

 private:
  std::shared_ptr<State> state_;
  std::shared_ptr<Owner> owner_;
  std::vector<std::string> types_;
  Fetched fetched_;
};

class SimulatedPasteboard::Items final : public PasteboardItems {
 public:
  bool isEmpty() const override { return items.empty(); }

  std::vector<std::pair<std::string, Bytes>> items;
};

SimulatedPasteboard::SimulatedPasteboard(SimulatedDispatch& dispatch, SimulatedFaults& faults)
    : state_(std::make_shared<State>(State{dispatch, faults})) {}
SimulatedPasteboard::~SimulatedPasteboard() = default;

void SimulatedPasteboard::setAnnouncesChanges(bool announces) {
  state_->announces = announces;
}
bool SimulatedPasteboard::announcesChanges() const {
  return state_->announces;
}

std::int64_t SimulatedPasteboard::changeCount() const {
  state_->dispatch.requireMainThread("Pasteboard::changeCount");
  return state_->changeCount;
}

std::shared_ptr<PasteboardContents> SimulatedPasteboard::contents() const {
  state_->dispatch.requireMainThread("Pasteboard::contents");
  return std::make_shared<Contents>(state_, state_->shown, state_->fetched);
}

Registration SimulatedPasteboard::observeChanges(PasteboardReadPlan plan,
                                                 std::function<void()> handler) {
  state_->dispatch.requireMainThread("Pasteboard::observeChanges");
  if (!state_->announces) return {};
  if (state_->observer) state_->faults.add("a second pasteboard observer");
  state_->plan = std::move(plan);
  state_->observer = std::move(handler);
  return Registration([state = state_, id = ++state_->observerId] {
    if (state->observerId == id) state->observer = nullptr;
  });
}

std::int64_t SimulatedPasteboard::clearContents() {
  state_->dispatch.requireMainThread("Pasteboard::clearContents");
  state_->owner = state_->shown = std::make_shared<Owner>();
  state_->fetched.clear();
  state_->isOwnedByHost = true;
  return ++state_->changeCount;
}

void SimulatedPasteboard::write(const char* type, BytesView data) {
  state_->dispatch.requireMainThread("writing to the pasteboard");
  if (!state_->isOwnedByHost) state_->faults.add("a pasteboard write without clearContents");
  state_->owner->items.emplace_back(type, Bytes(data.begin(), data.end()));
}

bool SimulatedPasteboard::writeString(const std::string& text) {
  write(pasteboardType::string, Bytes(text.begin(), text.end()));
  return true;
}

bool SimulatedPasteboard::writeUrl(const std::string& url) {
  const bool isFile = url.rfind("file:", 0) == 0;
  write(isFile ? pasteboardType::fileUrl : pasteboardType::url, Bytes(url.begin(), url.end()));
  return true;
}

bool SimulatedPasteboard::writeImage(const Image& image) {
  const auto png = image.pngRepresentation();
  if (png.empty()) return false;
  write(pasteboardType::png, png);
  return true;
}

void SimulatedPasteboard::copyItems(
    std::function<void(std::shared_ptr<const PasteboardItems>)> done) const {
  state_->dispatch.requireMainThread("Pasteboard::copyItems");
  state_->dispatch.globalQueue().async([state = state_, done = std::move(done)]() mutable {
    auto copy = std::make_shared<Items>();
    const auto owner = state->owner;
    const auto types = state->waitFor(*owner) ? typesOf(*owner) : std::vector<std::string>{};
    for (const auto& type : types) {
      if (auto data = dataOf(*owner, type)) copy->items.emplace_back(type, std::move(*data));
    }
    state->dispatch.mainQueue().async([copy, done = std::move(done)] { done(copy); });
  });
}

bool SimulatedPasteboard::writeItems(const PasteboardItems& items) {
  for (const auto& [type, data] : dynamic_cast<const Items&>(items).items) {
    write(type.c_str(), data);
  }
  return !items.isEmpty();
}

std::shared_ptr<Owner> SimulatedPasteboard::otherProgramCopies(Owner owner) {
  auto copied = std::make_shared<Owner>(std::move(owner));
  state_->owner = copied;
  state_->isOwnedByHost = false;
  if (state_->announces) {
    announce(copied);
  } else {
    state_->shown = copied;
    ++state_->changeCount;
  }
  return copied;
}

// The owner is asked when it has just copied, so what is fetched is what it offered then.
void SimulatedPasteboard::announce(std::shared_ptr<Owner> owner) {
  auto fetched = owner->answerTime <= readDeadline ? fetch(*owner, state_->plan) : Fetched{};
  const double now = state_->dispatch.wallClock();
  state_->busyUntil = std::max(state_->busyUntil, now) + std::min(owner->answerTime, readDeadline);
  state_->dispatch.mainQueue().asyncAfter(
      state_->busyUntil - now,
      [state = state_, owner = std::move(owner), fetched = std::move(fetched)]() mutable {
        state->shown = std::move(owner);
        state->fetched = std::move(fetched);
        ++state->changeCount;
        if (const auto observer = state->observer) observer();
      });
}

std::shared_ptr<Owner> SimulatedPasteboard::otherProgramCopiesString(const std::string& text) {
  Owner owner;
  owner.items.emplace_back(pasteboardType::string, Bytes(text.begin(), text.end()));
  return otherProgramCopies(std::move(owner));
}

std::optional<Bytes> SimulatedPasteboard::otherProgramPastes(const std::string& type) const {
  return dataOf(*state_->owner, type);
}

std::vector<std::string> SimulatedPasteboard::offeredTypes() const {
  return typesOf(*state_->owner);
}

std::string SimulatedPasteboard::pastedString() const {
  const auto data = otherProgramPastes(pasteboardType::string).value_or(Bytes{});
  return {data.begin(), data.end()};
}

}  // namespace zephyx
