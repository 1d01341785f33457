#pragma once

#include <map>
#include <memory>
#include <string>

#include "Channel/MethodChannel.h"
#include "Platform/LifetimeGuard.h"

namespace zephyx {

class Dispatch;
class Platform;

/// Carries usage events of the host to the main engine, one message each. Nothing is kept: an event
/// without a main engine is lost.
class TelemetryRelay {
 public:
  static TelemetryRelay& shared();
  explicit TelemetryRelay(Platform& platform);

  /// The main window's channel. Main thread.
  std::weak_ptr<MethodChannel> notesChannel;

  /// Sends after the caller's current work. Any thread.
  void track(std::string name, std::map<std::string, std::string> props);

 private:
  Dispatch& dispatch_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
