#pragma once

namespace zephyx {

/// What is locked while it is cleaned; the trackpad together with every mouse.
enum class InputLockTarget { keyboard, trackpad };

}  // namespace zephyx
