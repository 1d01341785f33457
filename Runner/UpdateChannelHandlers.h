#pragma once

#include "Channel/MethodCall.h"
#include "Channel/MethodResult.h"

namespace zephyx {

/// The calls by which every screen asks about updates. Main thread.
class UpdateChannelHandlers {
 public:
  /// True when the method is one of these; `result` has been answered then.
  static bool handle(const MethodCall& call, MethodResult& result);
};

}  // namespace zephyx
