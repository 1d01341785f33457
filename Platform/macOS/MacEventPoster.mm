#import "Platform/macOS/MacEventPoster.h"

#import <CoreGraphics/CoreGraphics.h>

#import "Platform/macOS/OwnedRef.h"

namespace zephyx {

bool MacEventPoster::postKey(std::uint16_t keyCode, std::uint64_t modifierFlags) {
  const auto source = OwnedRef<CGEventSourceRef>::adopt(
      CGEventSourceCreate(kCGEventSourceStateCombinedSessionState));
  // An event can be made without a source as well.
  const auto event = [&](bool isDown) {
    return OwnedRef<CGEventRef>::adopt(CGEventCreateKeyboardEvent(source.get(), keyCode, isDown));
  };
  const auto down = event(true);
  const auto up = event(false);
  if (!down || !up) return false;
  // A new event carries the modifiers that are held; set, they are exactly these.
  CGEventSetFlags(down.get(), static_cast<CGEventFlags>(modifierFlags));
  CGEventSetFlags(up.get(), static_cast<CGEventFlags>(modifierFlags));
  CGEventPost(kCGHIDEventTap, down.get());
  CGEventPost(kCGHIDEventTap, up.get());
  return true;
}

}  // namespace zephyx
