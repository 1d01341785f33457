#import "Platform/macOS/MacMainQueue.h"

#import <CoreFoundation/CoreFoundation.h>

#include <deque>
#include <mutex>
#include <utility>

#import "Platform/macOS/OwnedRef.h"

namespace zephyx {

/// The waiting blocks and the run loop source that takes them out, one per firing.
class MacMainQueue::Blocks {
 public:
  Blocks() {
    CFRunLoopSourceContext context{};
    context.info = this;
    context.perform = [](void* blocks) { static_cast<Blocks*>(blocks)->runNext(); };
    source_ = OwnedRef<CFRunLoopSourceRef>::adopt(
        CFRunLoopSourceCreate(kCFAllocatorDefault, 0, &context));
    CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
  }
  Blocks(const Blocks&) = delete;
  Blocks& operator=(const Blocks&) = delete;
  ~Blocks() { CFRunLoopSourceInvalidate(source_.get()); }

  void add(std::function<void()> block) {
    const std::lock_guard lock(mutex_);
    blocks_.push_back(std::move(block));
    signal();
  }

 private:
  void runNext() {
    // Outside of events the application's own pool is not drained.
    @autoreleasepool {
      std::function<void()> block;
      {
        const std::lock_guard lock(mutex_);
        if (blocks_.empty()) return;
        block = std::move(blocks_.front());
        blocks_.pop_front();
        // Before the block runs: it may run a loop of its own, which then takes the next ones out.
        if (!blocks_.empty()) signal();
      }
      block();  // may destroy this object
    }
  }

  void signal() {
    CFRunLoopSourceSignal(source_.get());
    CFRunLoopWakeUp(CFRunLoopGetMain());
  }

  OwnedRef<CFRunLoopSourceRef> source_;
  std::mutex mutex_;
  std::deque<std::function<void()>> blocks_;
};

MacMainQueue::MacMainQueue() : blocks_(std::make_shared<Blocks>()) {}

MacMainQueue::~MacMainQueue() = default;

void MacMainQueue::async(std::function<void()> block) {
  blocks_->add(std::move(block));
}

void MacMainQueue::asyncAfter(double seconds, std::function<void()> block) {
  if (seconds <= 0) return async(std::move(block));
  struct Delayed {
    std::weak_ptr<Blocks> blocks;
    std::function<void()> block;
  };
  auto delayed = std::make_unique<Delayed>(Delayed{blocks_, std::move(block)});
  CFRunLoopTimerContext context{};
  context.info = delayed.get();
  // The run loop releases a timer that has fired on the main thread, where the block belongs.
  context.release = [](const void* info) { delete static_cast<const Delayed*>(info); };
  const auto timer = OwnedRef<CFRunLoopTimerRef>::adopt(CFRunLoopTimerCreate(
      kCFAllocatorDefault, CFAbsoluteTimeGetCurrent() + seconds, 0, 0, 0,
      [](CFRunLoopTimerRef, void* info) {
        auto* due = static_cast<Delayed*>(info);
        if (const auto blocks = due->blocks.lock()) blocks->add(std::move(due->block));
      },
      &context));
  if (!timer) return;
  [[maybe_unused]] const auto* ownedByTimer = delayed.release();
  CFRunLoopAddTimer(CFRunLoopGetMain(), timer.get(), kCFRunLoopCommonModes);
  CFRunLoopWakeUp(CFRunLoopGetMain());
}

}  // namespace zephyx
