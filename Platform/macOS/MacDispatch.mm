#import "Platform/macOS/MacDispatch.h"

#import <Foundation/Foundation.h>
#import <QuartzCore/QuartzCore.h>

#include <memory>
#include <utility>

namespace zephyx {
namespace {

/// Share of the interval by which the system may delay one firing to wake the processor less often;
/// it does not add up. 40 ms for the poll of the pasteboard: no copy is overlooked for it.
constexpr double toleranceShare = 0.1;

/// A scheduled timer, and the wish not to be slowed down while it runs: App Nap throttles the
/// timers of a program in the background without a visible window.
class RunningTimer {
 public:
  explicit RunningTimer(NSTimer* timer) : timer_(timer) {
    [NSRunLoop.mainRunLoop addTimer:timer_ forMode:NSRunLoopCommonModes];
  }
  RunningTimer(const RunningTimer&) = delete;
  RunningTimer& operator=(const RunningTimer&) = delete;
  ~RunningTimer() {
    [timer_ invalidate];
    [NSProcessInfo.processInfo endActivity:activity_];
  }

 private:
  NSTimer* timer_;
  id<NSObject> activity_ = [NSProcessInfo.processInfo
      beginActivityWithOptions:NSActivityUserInitiatedAllowingIdleSystemSleep
                        reason:@"Watching for changes"];
};

}  // namespace

DispatchQueue& MacDispatch::serialQueue(const std::string& label, QualityOfService quality) {
  const auto found = serialQueues_.find(label);
  if (found != serialQueues_.end()) return found->second;
  const auto systemQuality =
      quality == QualityOfService::utility ? QOS_CLASS_UTILITY : QOS_CLASS_USER_INITIATED;
  dispatch_queue_t queue = dispatch_queue_create(
      label.c_str(),
      dispatch_queue_attr_make_with_qos_class(DISPATCH_QUEUE_SERIAL, systemQuality, 0));
  return serialQueues_.try_emplace(label, queue).first->second;
}

void MacDispatch::finishWork() {
  for (auto& [label, queue] : serialQueues_) queue.finish();
  globalQueue_.finish();
}

bool MacDispatch::isMainThread() const {
  return NSThread.isMainThread;
}

Registration MacDispatch::scheduleRepeatingTimer(double interval, std::function<void()> block) {
  const auto callback = std::make_shared<std::function<void()>>(std::move(block));
  NSTimer* timer = [NSTimer timerWithTimeInterval:interval
                                          repeats:YES
                                            block:^(NSTimer*) {
                                              // Outlives the end of its own registration.
                                              const auto running = callback;
                                              @autoreleasepool {
                                                (*running)();
                                              }
                                            }];
  timer.tolerance = interval * toleranceShare;
  auto running = std::make_shared<RunningTimer>(timer);
  return Registration([running]() mutable { running.reset(); });
}

double MacDispatch::wallClock() const {
  return NSDate.date.timeIntervalSince1970;
}

double MacDispatch::mediaClock() const {
  return CACurrentMediaTime();
}

}  // namespace zephyx
