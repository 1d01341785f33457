#import "Platform/macOS/EventTranslation.h"

namespace zephyx {

static_assert(static_cast<NSUInteger>(EventType::leftMouseDown) == NSEventTypeLeftMouseDown);
static_assert(static_cast<NSUInteger>(EventType::leftMouseUp) == NSEventTypeLeftMouseUp);
static_assert(static_cast<NSUInteger>(EventType::leftMouseDragged) == NSEventTypeLeftMouseDragged);
static_assert(static_cast<NSUInteger>(EventType::keyDown) == NSEventTypeKeyDown);

std::optional<Event> hostEvent(NSEvent* event) {
  const auto type = static_cast<EventType>(event.type);
  switch (type) {
    case EventType::leftMouseDown:
    case EventType::leftMouseUp:
    case EventType::leftMouseDragged:
      return Event{type, event.modifierFlags};
    case EventType::keyDown:
      // Asking another kind of event for its key raises an exception.
      return Event{type, event.modifierFlags, event.keyCode, static_cast<bool>(event.ARepeat)};
    default:
      return std::nullopt;
  }
}

}  // namespace zephyx
