#import "Platform/macOS/MacWorkQueue.h"

#import <Foundation/Foundation.h>

#include <algorithm>
#include <cstdint>
#include <mutex>
#include <utility>

namespace zephyx {
namespace {
using Block = std::function<void()>;
}

class MacWorkQueue::Work {
 public:
  explicit Work(dispatch_queue_t queue) : queue_(queue) {}

  dispatch_queue_t queue() const { return queue_; }

  void start(Block block) {
    const std::lock_guard lock(mutex_);
    if (!isOpen_) return;
    // A function and a pointer, not an Objective-C block: those are copied, and the last copy may
    // die on the thread that handed it in.
    dispatch_group_async_f(group_, queue_, new Block(std::move(block)), [](void* context) {
      @autoreleasepool {
        const std::unique_ptr<Block> due(static_cast<Block*>(context));
        (*due)();
      }
    });
  }

  void finish() {
    {
      const std::lock_guard lock(mutex_);
      isOpen_ = false;
    }
    dispatch_group_wait(group_, DISPATCH_TIME_FOREVER);
  }

 private:
  const dispatch_queue_t queue_;
  dispatch_group_t group_ = dispatch_group_create();
  std::mutex mutex_;
  bool isOpen_ = true;
};

MacWorkQueue::MacWorkQueue(dispatch_queue_t queue) : work_(std::make_shared<Work>(queue)) {}

MacWorkQueue::~MacWorkQueue() {
  finish();
}

void MacWorkQueue::async(std::function<void()> block) {
  work_->start(std::move(block));
}

void MacWorkQueue::asyncAfter(double seconds, std::function<void()> block) {
  struct Delayed {
    std::weak_ptr<Work> work;
    Block block;
  };
  const double nanoseconds = std::max(0.0, seconds) * static_cast<double>(NSEC_PER_SEC);
  dispatch_after_f(dispatch_time(DISPATCH_TIME_NOW, static_cast<std::int64_t>(nanoseconds)),
                   work_->queue(), new Delayed{work_, std::move(block)}, [](void* context) {
                     const std::unique_ptr<Delayed> due(static_cast<Delayed*>(context));
                     if (const auto work = due->work.lock()) work->start(std::move(due->block));
                   });
}

void MacWorkQueue::finish() {
  work_->finish();
}

}  // namespace zephyx
