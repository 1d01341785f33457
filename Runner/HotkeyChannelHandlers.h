#pragma once

#include "Channel/MethodCall.h"
#include "Channel/MethodResult.h"

namespace zephyx {

class Platform;

/// The calls by which the settings screen lists, sets, resets and records hotkeys. Main thread.
class HotkeyChannelHandlers {
 public:
  /// `platform` outlives this object.
  explicit HotkeyChannelHandlers(Platform& platform) : platform_(platform) {}

  /// True when the method is one of these; `result` is taken then, and answered once, maybe later.
  bool handle(const MethodCall& call, MethodResult& result);

 private:
  void set(const Value& arguments, MethodResult result);
  void reset(const Value& arguments, MethodResult result);
  void resetAll(MethodResult result);
  void startRecording(const Value& arguments, MethodResult result);

  Platform& platform_;
};

}  // namespace zephyx
