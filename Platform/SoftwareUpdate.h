#pragma once

#include <optional>
#include <string>

#include "Platform/Registration.h"

namespace zephyx {

/// How far an update has come when it is about to be shown.
struct UpdateState {
  enum class Stage { notDownloaded, downloaded, installing };
  Stage stage = Stage::notDownloaded;
  bool userInitiated = false;  ///< the user asked for the check that found it
};

/// Decides with the update framework, and is told what the user gets to see. Versions are those for
/// people to read. Main thread.
class SoftwareUpdateDelegate {
 public:
  virtual ~SoftwareUpdateDelegate() = default;

  /// Where to look for updates; nothing for the address of the build's configuration.
  virtual std::optional<std::string> feedUrlString() = 0;
  /// False when nobody but the framework's window would tell of a scheduled update.
  virtual bool supportsGentleScheduledUpdateReminders() = 0;
  /// Whether the framework shows its window for an update that a scheduled check has found.
  /// `inImmediateFocus` when that would not come in the way of anything: the program is in front
  /// and has just been started.
  virtual bool shouldHandleShowingScheduledUpdate(const std::string& version,
                                                  bool inImmediateFocus) = 0;
  /// `handled` when the framework's window comes next; without it the reminder is the delegate's.
  virtual void willHandleShowingUpdate(bool handled, const std::string& version,
                                       const UpdateState& state) = 0;
  /// The user has seen the update in the framework's window, or it is on offer no more.
  virtual void didReceiveUserAttention(const std::string& version) = 0;
};

/// The update framework: looks for new versions, shows, downloads and installs them in windows of
/// its own. Main thread.
class SoftwareUpdate {
 public:
  virtual ~SoftwareUpdate() = default;

  /// Why there can be no updates, in a sentence for the user; nothing when there can.
  virtual std::optional<std::string> unavailableReason() const = 0;
  /// Checks on schedule from now on, until the registration is dropped; the first check is none of
  /// the start's work. Nothing when there can be no updates. Called once.
  [[nodiscard]] virtual Registration start(SoftwareUpdateDelegate& delegate) = 0;
  /// The user asks: an update, none or a failure, each is shown, and at once what has already been
  /// found. Nothing when there can be no updates, or it was not started.
  virtual void checkForUpdates() = 0;
};

}  // namespace zephyx
