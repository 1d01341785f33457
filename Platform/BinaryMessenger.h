#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "Platform/Registration.h"

namespace zephyx {

using Bytes = std::vector<std::uint8_t>;
using BytesView = std::span<const std::uint8_t>;

/// Receives the other side's answer; an empty view means that nobody handled the message. Called at
/// most once, on the main thread; never called when the engine ends first.
using BinaryReply = std::function<void(BytesView)>;

/// Handles one message. The view is valid during the call only. `reply` is never empty; it may be
/// called later, must be called exactly once, and does nothing once the engine is gone.
using BinaryMessageHandler = std::function<void(BytesView message, BinaryReply reply)>;

/// Bytes by channel name to and from one engine. Owned by its engine; main thread only.
/// Delivery keeps the order of sending and never happens inside `send`.
class BinaryMessenger {
 public:
  virtual ~BinaryMessenger() = default;

  /// `reply` may be empty when no answer is awaited. Dropped silently once the engine has shut
  /// down.
  virtual void send(const std::string& channel, Bytes message, BinaryReply reply) = 0;

  /// One handler per channel name; a newer one replaces the older, whose registration then ends
  /// nothing.
  [[nodiscard]] virtual Registration setMessageHandler(const std::string& channel,
                                                       BinaryMessageHandler handler) = 0;
};

}  // namespace zephyx
