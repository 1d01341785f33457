#import "Platform/macOS/MacEventMonitors.h"

#import <AppKit/AppKit.h>

#include <memory>
#include <utility>

#import "Platform/macOS/EventTranslation.h"

namespace zephyx {

Registration MacEventMonitors::addLocalMonitor(std::uint64_t mask,
                                               std::function<bool(const Event&)> handler) {
  struct Monitor {
    std::function<bool(const Event&)> handler;
    bool isRegistered = true;
  };
  const auto monitor = std::make_shared<Monitor>(Monitor{std::move(handler)});
  id token =
      [NSEvent addLocalMonitorForEventsMatchingMask:static_cast<NSEventMask>(mask)
                                            handler:^NSEvent*(NSEvent* event) {
                                              // Outlives the end of its own registration.
                                              const auto running = monitor;
                                              const auto translated = hostEvent(event);
                                              if (!running->isRegistered || !translated) {
                                                return event;
                                              }
                                              return running->handler(*translated) ? event : nil;
                                            }];
  if (!token) return {};
  return Registration([monitor, token] {
    monitor->isRegistered = false;
    [NSEvent removeMonitor:token];
  });
}

}  // namespace zephyx
