#pragma once

#include "Platform/SoftwareUpdate.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

/// An update framework whose feed and schedule are the test's.
class SimulatedSoftwareUpdate final : public SoftwareUpdate {
 public:
  explicit SimulatedSoftwareUpdate(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  std::optional<std::string> unavailableReason() const override { return unavailableReason_; }

  Registration start(SoftwareUpdateDelegate& delegate) override {
    dispatch_.requireMainThread("SoftwareUpdate::start");
    if (unavailableReason_) return {};
    delegate_ = &delegate;
    return Registration([this] { delegate_ = nullptr; });
  }

  void checkForUpdates() override {
    dispatch_.requireMainThread("SoftwareUpdate::checkForUpdates");
    if (!delegate_) return;
    ++userChecks_;
    windowIsShown_ = true;
    if (!offered_) return;
    if (found_ != offered_) delegate_->willHandleShowingUpdate(true, *offered_, {{}, true});
    found_ = offered_;
    userSeesWindow();
  }

  void setUnavailable(std::string reason) { unavailableReason_ = std::move(reason); }
  /// What the feed holds from now on.
  void offer(std::optional<std::string> version) { offered_ = std::move(version); }
  /// The time of a check has come.
  void runScheduledCheck(bool inImmediateFocus) {
    if (!delegate_ || !offered_ || windowIsShown_) return;
    found_ = offered_;
    windowIsShown_ = !delegate_->supportsGentleScheduledUpdateReminders() ||
                     delegate_->shouldHandleShowingScheduledUpdate(*found_, inImmediateFocus);
    delegate_->willHandleShowingUpdate(windowIsShown_, *found_, {});
  }
  /// The user looks at the window that is shown.
  void userSeesWindow() {
    if (delegate_ && windowIsShown_ && found_) delegate_->didReceiveUserAttention(*found_);
  }
  void userClosesWindow() {
    windowIsShown_ = false;
    found_.reset();
  }

  bool isStarted() const { return delegate_ != nullptr; }
  bool windowIsShown() const { return windowIsShown_; }
  /// How often the user has asked.
  int userChecks() const { return userChecks_; }

 private:
  SimulatedDispatch& dispatch_;
  SoftwareUpdateDelegate* delegate_ = nullptr;
  std::optional<std::string> unavailableReason_;
  std::optional<std::string> offered_;
  std::optional<std::string> found_;
  bool windowIsShown_ = false;
  int userChecks_ = 0;
};

}  // namespace zephyx
