#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "Channel/ChannelLog.h"
#include "Channel/MethodCall.h"
#include "Channel/MethodResult.h"
#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// A named, bidirectional method channel to one engine, on Flutter's standard method codec. Main
/// thread. Holds the messenger weakly: once the engine is gone, sending does nothing. Dropping the
/// channel takes its handler off.
class MethodChannel {
 public:
  /// A result that it does not take over ends with the call, and counts as dropped.
  using Handler = std::function<void(MethodCall&& call, MethodResult&& result)>;
  using ReplyHandler = std::function<void(MethodReply reply)>;
  /// Told in words about malformed messages and dropped answers; never about contents.
  using Diagnostics = ChannelLog::Diagnostics;

  MethodChannel(const std::shared_ptr<BinaryMessenger>& messenger, std::string name,
                Diagnostics diagnostics);
  MethodChannel(const MethodChannel&) = delete;
  MethodChannel& operator=(const MethodChannel&) = delete;

  /// Sends a call; no answer is awaited.
  void invokeMethod(std::string_view method, const Value& arguments = {});
  /// Sends a call; `reply` runs once with its end, a malformed answer counting as an error with
  /// code "malformed". It never runs when the engine ends first.
  void invokeMethod(std::string_view method, const Value& arguments, ReplyHandler reply);

  /// Replaces the handler; an empty one takes it off. A malformed message is answered with an error
  /// with code "malformed" and does not reach the handler.
  void setMethodCallHandler(Handler handler);

 private:
  std::weak_ptr<BinaryMessenger> messenger_;
  ChannelLog log_;
  Registration handler_;
};

}  // namespace zephyx
