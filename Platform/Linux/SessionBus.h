#pragma once

namespace zephyx {

/// True when the user's session has a message bus. Connecting without one makes the bus library
/// start a bus of its own, which takes longer than the rest of the start.
bool hasSessionBus();

}  // namespace zephyx
