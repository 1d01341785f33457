#pragma once

#include "Channel/MethodCall.h"
#include "Channel/MethodResult.h"

namespace zephyx {

class UserDefaults;

/// The calls by which the settings screen lists the coding agents and shows or hides their rows.
/// Main thread.
class AgentVisibilityChannelHandlers {
 public:
  /// `userDefaults` outlives this object.
  explicit AgentVisibilityChannelHandlers(UserDefaults& userDefaults)
      : userDefaults_(userDefaults) {}

  /// True when the method is one of these; `result` is then taken and answered.
  bool handle(const MethodCall& call, MethodResult& result);

 private:
  void get(MethodResult result);
  void set(const Value& arguments, MethodResult result);

  UserDefaults& userDefaults_;
};

}  // namespace zephyx
