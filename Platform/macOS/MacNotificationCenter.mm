#import "Platform/macOS/MacNotificationCenter.h"

#include <utility>

#import "Platform/macOS/Strings.h"

namespace zephyx {

MacNotificationCenter::MacNotificationCenter(NSNotificationCenter* center)
    : center_(center), observers_(std::make_shared<LocalNotificationCenter>()) {}

MacNotificationCenter::~MacNotificationCenter() {
  for (const auto& [name, token] : watched_) [center_ removeObserver:token];
}

Registration MacNotificationCenter::addObserver(const std::string& name, const void* object,
                                                std::function<void()> block) {
  watch(name);
  return observers_->addObserver(name, object, std::move(block));
}

// The system promises no order among observers, and may still call one that was removed while a
// notification is on its way. So it has one observer a name, which calls ours.
void MacNotificationCenter::watch(const std::string& name) {
  if (watched_.contains(name)) return;
  const std::weak_ptr<LocalNotificationCenter> weakObservers = observers_;
  const auto post = [weakObservers, name](const void* object) {
    if (const auto observers = weakObservers.lock()) observers->post(name, object);
  };
  // No queue: the block runs where the notification is posted, before the poster goes on.
  watched_[name] = [center_ addObserverForName:nsString(name)
                                        object:nil
                                         queue:nil
                                    usingBlock:^(NSNotification* notification) {
                                      const void* object =
                                          (__bridge const void*)notification.object;
                                      if (NSThread.isMainThread) return post(object);
                                      dispatch_async(dispatch_get_main_queue(), ^{
                                        post(object);
                                      });
                                    }];
}

}  // namespace zephyx
