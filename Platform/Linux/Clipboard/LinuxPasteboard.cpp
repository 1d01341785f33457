#include "Platform/Linux/Clipboard/LinuxPasteboard.h"

#include <QtCore/QMetaObject>
#include <chrono>
#include <future>
#include <utility>
#include <variant>

#include "Platform/Image.h"
#include "Platform/Linux/Clipboard/ClipboardThread.h"
#include "Platform/Linux/Clipboard/CopiedContents.h"

namespace zephyx {
namespace {

constexpr std::chrono::milliseconds serverPatience(500);

bool becomesTrue(std::future<bool> result) {
  if (result.wait_for(serverPatience) != std::future_status::ready) return false;
  try {
    return result.get();
  } catch (const std::future_error&) {  // the thread has ended
    return false;
  }
}

}  // namespace

class LinuxPasteboard::Items final : public PasteboardItems {
 public:
  explicit Items(std::shared_ptr<const OwnedContents> held) : contents(std::move(held)) {}

  bool isEmpty() const override { return contents->targets().empty(); }

  const std::shared_ptr<const OwnedContents> contents;
};

LinuxPasteboard::LinuxPasteboard(ApplicationForProcess applicationForProcess)
    : applicationForProcess_(std::move(applicationForProcess)),
      thread_(std::make_shared<ClipboardThread>()),
      announcements_(thread_->announcement().descriptor(), QSocketNotifier::Read),
      contents_(std::make_shared<CopiedContents>(thread_, applicationForProcess_)) {
  auto show = lifetime_.wrap([this] { showNews(); });
  QObject::connect(&announcements_, &QSocketNotifier::activated, &announcements_,
                   [show]() mutable { show(); });
}

LinuxPasteboard::~LinuxPasteboard() {
  announcements_.setEnabled(false);
  thread_->stop();  // contents objects and those who wait in them may live longer
}

Registration LinuxPasteboard::observeChanges(PasteboardReadPlan plan,
                                             std::function<void()> handler) {
  if (!thread_->announcesChanges()) return {};
  thread_->setPlan(std::move(plan));
  handler_ = std::move(handler);
  return Registration(lifetime_.wrap([this, observer = ++observer_] {
    if (observer != observer_) return;
    handler_ = nullptr;
    thread_->setPlan({});
  }));
}

// One at a time: a handler may run a loop of its own, which comes here again.
void LinuxPasteboard::showNews() {
  thread_->announcement().lower();
  while (auto news = thread_->takeNews()) {
    if (auto* copy = std::get_if<CopySnapshot>(&*news)) {
      showCopy(std::move(*copy));
    } else {
      showSaved(std::move(std::get<SavedCopy>(*news)));
    }
  }
}

void LinuxPasteboard::showSaved(SavedCopy saved) {
  const auto waiting = waitingForItems_.extract(saved.question);
  if (!waiting) return;
  std::shared_ptr<const OwnedContents> contents = owned_;
  if (!contents) {
    contents = OwnedContents(applicationForProcess_).withSaved(std::move(saved.targets));
  }
  waiting.mapped()(std::make_shared<Items>(std::move(contents)));
}

void LinuxPasteboard::showCopy(CopySnapshot snapshot) {
  freedMemory_.giveBackLater();
  const bool isOnTheClipboard = snapshot.number != notOnTheClipboard;
  const bool isOlderThanOwnWrite =
      isOnTheClipboard && owned_ && snapshot.ownWritesSeen < ownWrites_;
  ++changeCount_;
  contents_ =
      std::make_shared<CopiedContents>(thread_, applicationForProcess_, std::move(snapshot));
  const auto shown = contents_;
  if (isOnTheClipboard && !isOlderThanOwnWrite) owned_.reset();
  if (const auto handler = handler_) handler();
  // The handler had to see that copy, but the write came after it.
  if (isOlderThanOwnWrite && contents_ == shown) contents_ = owned_;
}

std::int64_t LinuxPasteboard::clearContents() {
  ++changeCount_;
  write(std::make_shared<OwnedContents>(applicationForProcess_));
  return changeCount_;
}

bool LinuxPasteboard::writeString(const std::string& text) {
  return owned_ && write(owned_->withString(text));
}

bool LinuxPasteboard::writeUrl(const std::string& url) {
  return owned_ && write(owned_->withUrl(url));
}

bool LinuxPasteboard::writeImage(const Image& image) {
  if (!owned_) return false;
  auto png = image.pngRepresentation();
  return !png.empty() && write(owned_->withPng(std::move(png)));
}

void LinuxPasteboard::copyItems(ItemsHandler done) const {
  if (const auto question = thread_->save()) {
    waitingForItems_[question] = std::move(done);
  } else {
    done(std::make_shared<Items>(std::make_shared<OwnedContents>(applicationForProcess_)));
  }
}

bool LinuxPasteboard::writeItems(const PasteboardItems& items) {
  const auto* copied = dynamic_cast<const Items*>(&items);
  return owned_ && copied && !copied->isEmpty() && write(owned_->withOld(*copied->contents));
}

bool LinuxPasteboard::takeSelectedText(unsigned int window) {
  return thread_->takeSelectedText(window);
}

bool LinuxPasteboard::write(std::shared_ptr<OwnedContents> contents) {
  if (!contents) return false;
  freedMemory_.giveBackLater();
  contents_ = owned_ = std::move(contents);
  offerLater();
  return true;
}

// Other programs see all writes of one turn, or none.
void LinuxPasteboard::offerLater() {
  if (std::exchange(isOfferPending_, true)) return;
  ++ownWrites_;
  auto offer = lifetime_.wrap([this] {
    if (isOfferPending_) offerNow();
  });
  QMetaObject::invokeMethod(
      &announcements_, [offer]() mutable { offer(); }, Qt::QueuedConnection);
}

void LinuxPasteboard::offerNow() {
  isOfferPending_ = false;
  offered_ = thread_->own(owned_, ownWrites_);
}

bool LinuxPasteboard::waitUntilOffered() {
  if (isOfferPending_) offerNow();
  if (!offered_.valid() || becomesTrue(std::exchange(offered_, {}))) return true;
  // Others hold the clipboard in spite of all tries: what is there is theirs.
  owned_.reset();
  contents_ = std::make_shared<CopiedContents>(thread_, applicationForProcess_);
  return false;
}

bool LinuxPasteboard::offerAsPrimary() {
  if (!owned_) return false;
  if (isOfferPending_) offerNow();
  auto primary = thread_->ownPrimary(owned_);
  return waitUntilOffered() && becomesTrue(std::move(primary));
}

}  // namespace zephyx
