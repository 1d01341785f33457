#pragma once

#include <chrono>
#include <functional>

namespace zephyx {

/// How many times slower than usual programs may be: 1, or what ZEPHYX_TEST_PATIENCE says, under
/// the sanitizers.
int patience();

/// Asks `condition` every few milliseconds until it holds; false when the deadline passed first.
/// The one place where desktop tests let time pass.
[[nodiscard]] bool waitFor(const std::function<bool()>& condition,
                           std::chrono::milliseconds deadline = std::chrono::seconds(5),
                           std::chrono::milliseconds interval = std::chrono::milliseconds(2));

/// True when `condition` stayed true for the whole of `duration`: for things that must not happen.
[[nodiscard]] bool holdsFor(const std::function<bool()>& condition,
                            std::chrono::milliseconds duration);

/// Lets a moment of a choreography pass (keys held down, copies at a given distance).
void pass(std::chrono::microseconds duration);

}  // namespace zephyx
