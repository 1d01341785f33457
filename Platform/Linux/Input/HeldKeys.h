#pragma once

#include <xcb/xcb.h>

#include "Platform/Linux/Input/ModifierMap.h"

namespace zephyx {

/// The keys that applications see as held down: fingers and synthesized presses together.
KeySet keysSeenDown(xcb_connection_t* connection);

/// Whether keys are down as applications see them, modifiers and locks aside.
bool hasPressedKeys(xcb_connection_t* connection);

/// The keys under the user's fingers, over all keyboards but the one that programs synthesize with.
KeySet keysPhysicallyDown(xcb_connection_t* connection);

}  // namespace zephyx
