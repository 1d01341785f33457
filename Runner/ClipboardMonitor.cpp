#include "Runner/ClipboardMonitor.h"

#include <cassert>
#include <utility>

#include "Platform/Application.h"
#include "Platform/Dispatch.h"
#include "Platform/Pasteboard.h"
#include "Platform/Platform.h"
#include "Runner/ClipboardCapture.h"
#include "Runner/SharedObjects.h"

namespace zephyx {
namespace {
constexpr double pollInterval = 0.4;
constexpr const char* clipboardEntryCaptured = "clipboardEntryCaptured";
}  // namespace

ClipboardMonitor& ClipboardMonitor::shared() {
  return SharedObjects::current().get<ClipboardMonitor>();
}

ClipboardMonitor::ClipboardMonitor(Platform& platform)
    : application_(platform.application()),
      dispatch_(platform.dispatch()),
      pasteboard_(platform.pasteboard()),
      workspace_(platform.workspace()),
      log_(platform.systemLog()),
      eventPoster_(platform.eventPoster()),
      reader_(std::make_shared<const ClipboardCapture>(platform)) {}

ClipboardMonitor::~ClipboardMonitor() = default;

void ClipboardMonitor::start() {
  lastChangeCount = pasteboard_.changeCount();
  announcements_ = pasteboard_.observeChanges(ClipboardCapture::readPlan(), lifetime_.wrap([this] {
    poll();
    if (isSuspended && onChangeWhileSuspended) onChangeWhileSuspended();
  }));
  timer_ = dispatch_.scheduleRepeatingTimer(pollInterval, lifetime_.wrap([this] { poll(); }));
}

void ClipboardMonitor::poll() {
  assert(dispatch_.isMainThread());
  if (isSuspended) return;
  const auto changeCount = pasteboard_.changeCount();
  if (changeCount == lastChangeCount) return;
  lastChangeCount = changeCount;
  if (ignoreNextChangeCount == changeCount) {
    ignoreNextChangeCount.reset();
    return;
  }
  capture(pasteboard_.contents());
}

void ClipboardMonitor::capture(std::shared_ptr<PasteboardContents> contents) {
  const auto sequence = nextCapture_++;
  auto finish = lifetime_.wrap(
      [this, sequence](std::optional<Map>& entry) { finishCapture(sequence, std::move(entry)); });
  dispatch_.globalQueue().async([&mainQueue = dispatch_.mainQueue(), reader = reader_,
                                 contents = std::move(contents), finish = std::move(finish)] {
    auto entry = std::make_shared<std::optional<Map>>(reader->entry(*contents));
    mainQueue.async([entry = std::move(entry), finish]() mutable { finish(*entry); });
  });
}

void ClipboardMonitor::finishCapture(Sequence sequence, std::optional<Map> entry) {
  finishedCaptures_.emplace(sequence, std::move(entry));
  for (auto next = finishedCaptures_.begin();
       next != finishedCaptures_.end() && next->first == nextEvent_;
       next = finishedCaptures_.erase(next)) {
    ++nextEvent_;
    if (next->second) sendEvent(std::move(*next->second));
  }
}

void ClipboardMonitor::sendEvent(Map entry) {
  if (const auto channel = methodChannel.lock()) {
    channel->invokeMethod(clipboardEntryCaptured, Value(std::move(entry)));
  }
}

}  // namespace zephyx
