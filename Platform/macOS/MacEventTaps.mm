#import "Platform/macOS/MacEventTaps.h"

#import <CoreFoundation/CoreFoundation.h>
#import <CoreGraphics/CoreGraphics.h>

#include <utility>

#import "Platform/macOS/OwnedRef.h"

namespace zephyx {
namespace {

static_assert(static_cast<CGEventType>(EventType::keyDown) == kCGEventKeyDown);
static_assert(static_cast<CGEventType>(EventType::flagsChanged) == kCGEventFlagsChanged);
static_assert(static_cast<CGEventType>(EventType::mouseMoved) == kCGEventMouseMoved);
static_assert(static_cast<CGEventType>(EventType::scrollWheel) == kCGEventScrollWheel);
static_assert(static_cast<CGEventType>(EventType::otherMouseDragged) == kCGEventOtherMouseDragged);
static_assert(static_cast<CGEventType>(EventType::tapDisabledByTimeout) ==
              kCGEventTapDisabledByTimeout);
static_assert(static_cast<CGEventType>(EventType::tapDisabledByUserInput) ==
              kCGEventTapDisabledByUserInput);

Event hostEvent(CGEventType type, CGEventRef event) {
  const Event translated{.type = static_cast<EventType>(type)};
  switch (type) {
    case kCGEventKeyDown:
    case kCGEventKeyUp:
    case kCGEventFlagsChanged:
      return {
          translated.type, CGEventGetFlags(event),
          static_cast<std::uint16_t>(CGEventGetIntegerValueField(event, kCGKeyboardEventKeycode)),
          CGEventGetIntegerValueField(event, kCGKeyboardEventAutorepeat) != 0};
    default:
      return translated;
  }
}

class MacEventTap final : public EventTap {
 public:
  explicit MacEventTap(EventTapCallbacks callbacks) : callbacks_(std::move(callbacks)) {}
  MacEventTap(const MacEventTap&) = delete;
  MacEventTap& operator=(const MacEventTap&) = delete;
  ~MacEventTap() override {
    if (!port_) return;
    CGEventTapEnable(port_.get(), false);
    CFMachPortInvalidate(port_.get());
    if (source_) CFRunLoopRemoveSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
  }

  bool create(std::uint64_t mask) {
    port_ = OwnedRef<CFMachPortRef>::adopt(CGEventTapCreate(
        kCGSessionEventTap, kCGHeadInsertEventTap, kCGEventTapOptionDefault, mask, tapped, this));
    if (!port_) return false;
    source_ = OwnedRef<CFRunLoopSourceRef>::adopt(
        CFMachPortCreateRunLoopSource(kCFAllocatorDefault, port_.get(), 0));
    if (!source_) return false;
    CFRunLoopAddSource(CFRunLoopGetMain(), source_.get(), kCFRunLoopCommonModes);
    return enable();
  }

  bool enable() override {
    CGEventTapEnable(port_.get(), true);
    return CGEventTapIsEnabled(port_.get());
  }

 private:
  static CGEventRef tapped(CGEventTapProxy, CGEventType type, CGEventRef event, void* tap) {
    @autoreleasepool {
      static_cast<MacEventTap*>(tap)->callbacks_.event(hostEvent(type, event));
    }
    return nullptr;
  }

  const EventTapCallbacks callbacks_;
  OwnedRef<CFMachPortRef> port_;
  OwnedRef<CFRunLoopSourceRef> source_;
};

}  // namespace

EventTapCreation MacEventTaps::createEventTap(std::uint64_t mask, EventTapCallbacks callbacks) {
  auto tap = std::make_unique<MacEventTap>(std::move(callbacks));
  if (!tap->create(mask)) return {};
  return {.tap = std::move(tap)};
}

}  // namespace zephyx
