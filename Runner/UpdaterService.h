#pragma once

#include <optional>
#include <string>

#include "Platform/LifetimeGuard.h"
#include "Platform/Registration.h"
#include "Platform/SoftwareUpdate.h"

namespace zephyx {

class Application;
class Dispatch;
class Platform;

/// Stands behind the update framework and tells all three engines when there is a new version, so
/// that each can show it gently. Checks on schedule from its creation on. Main thread.
class UpdaterService final : public SoftwareUpdateDelegate {
 public:
  static UpdaterService& shared();
  explicit UpdaterService(Platform& platform);

  /// The version that is announced now; nothing once the user has seen it.
  const std::optional<std::string>& availableVersion() const { return availableVersion_; }
  /// The check that the user asks for, after the caller's current work.
  void checkForUpdates();

  std::optional<std::string> feedUrlString() override { return std::nullopt; }
  bool supportsGentleScheduledUpdateReminders() override { return true; }
  bool shouldHandleShowingScheduledUpdate(const std::string& version,
                                          bool inImmediateFocus) override;
  void willHandleShowingUpdate(bool handled, const std::string& version,
                               const UpdateState& state) override;
  void didReceiveUserAttention(const std::string& version) override;

 private:
  void broadcast(std::optional<std::string> version);

  Application& application_;
  Dispatch& dispatch_;
  SoftwareUpdate& softwareUpdate_;
  std::optional<std::string> availableVersion_;
  Registration checks_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
