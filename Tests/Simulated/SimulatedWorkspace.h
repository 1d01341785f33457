#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Tests/Simulated/SimulatedRunningApplication.h"

namespace zephyx {

class SimulatedDispatch;
class SimulatedKeyboardLayout;
class SimulatedPasteboard;

/// The running applications, the host among them, and which of them is in front.
class SimulatedWorkspace final : public Workspace {
 public:
  using Application = SimulatedRunningApplication;

  static constexpr const char* hostBundleIdentifier = "com.zephyx.app";

  SimulatedWorkspace(SimulatedDispatch& dispatch, SimulatedPasteboard& pasteboard,
                     const SimulatedKeyboardLayout& layout);

  std::shared_ptr<RunningApplication> frontmostApplication() const override { return frontmost_; }
  bool usesCooperativeActivation() const override { return usesCooperativeActivation_; }
  void openUrl(const std::string& url) override;
  void activateFileViewerSelecting(const std::string& path) override;

  /// Starts a program; it does not come to the front by itself.
  std::shared_ptr<Application> start(Application::Description description);
  /// Puts a program in front now; null for none.
  void bringToFront(const std::shared_ptr<Application>& application);
  const std::shared_ptr<Application>& frontmost() const { return frontmost_; }
  const std::shared_ptr<Application>& host() const { return host_; }
  bool hostIsInFront() const { return frontmost_ == host_; }
  /// For the machine: told when the host comes to the front or leaves it.
  void setHostActivityHandler(std::function<void(bool isActive)> handler);

  /// Seconds from a request until it takes effect.
  void setActivationTime(double seconds) { activationTime_ = seconds; }
  /// For the machine: `application` comes to the front after the activation time.
  void requestActivation(const std::shared_ptr<Application>& application);
  void setUsesCooperativeActivation(bool uses) { usesCooperativeActivation_ = uses; }
  /// The host runs without a bundle, and so without an identifier.
  void forgetHostBundle();

  const std::vector<std::string>& openedUrls() const { return openedUrls_; }
  const std::vector<std::string>& shownFiles() const { return shownFiles_; }

 private:
  SimulatedDispatch& dispatch_;
  SimulatedPasteboard& pasteboard_;
  const SimulatedKeyboardLayout& layout_;
  std::vector<std::shared_ptr<Application>> applications_;
  std::shared_ptr<Application> host_;
  std::shared_ptr<Application> frontmost_;
  std::function<void(bool)> hostActivityHandler_;
  double activationTime_ = 0;
  bool usesCooperativeActivation_ = false;
  std::vector<std::string> openedUrls_;
  std::vector<std::string> shownFiles_;
};

}  // namespace zephyx
