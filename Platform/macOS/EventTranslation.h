#pragma once

#import <AppKit/AppKit.h>

#include <optional>

#include "Platform/Events.h"

namespace zephyx {

/// Nothing for an event of a kind that the host does not know. The host's numbers of event types,
/// keys and modifiers are the system's.
std::optional<Event> hostEvent(NSEvent* event);

}  // namespace zephyx
