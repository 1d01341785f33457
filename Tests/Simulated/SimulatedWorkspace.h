#pragma once

#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedKeyboardLayout.h"
#include "Tests/Simulated/SimulatedPasteboard.h"
#include "Tests/Simulated/SimulatedRunningApplication.h"

namespace zephyx {

/// The running applications, the host among them, and which of them is in front.
class SimulatedWorkspace final : public Workspace {
 public:
  using Application = SimulatedRunningApplication;

  static constexpr const char* hostBundleIdentifier = "com.zephyx.app";

  SimulatedWorkspace(SimulatedDispatch& dispatch, SimulatedPasteboard& pasteboard,
                     const SimulatedKeyboardLayout& layout)
      : dispatch_(dispatch), pasteboard_(pasteboard), layout_(layout) {
    host_ = start({hostBundleIdentifier, "Zephyx", nullptr});
  }

  std::shared_ptr<RunningApplication> frontmostApplication() const override { return frontmost_; }
  bool usesCooperativeActivation() const override { return usesCooperativeActivation_; }
  void openUrl(const std::string& url) override {
    dispatch_.requireMainThread("Workspace::openUrl");
    openedUrls_.push_back(url);
  }
  void activateFileViewerSelecting(const std::string& path) override {
    dispatch_.requireMainThread("Workspace::activateFileViewerSelecting");
    shownFiles_.push_back(path);
  }

  /// Starts a program; it does not come to the front by itself.
  std::shared_ptr<Application> start(Application::Description description) {
    Application::Machine machine;
    machine.isInFront = [this](const Application& application) {
      return frontmost_.get() == &application;
    };
    machine.requestActivation = [this](Application& requested) {
      for (const auto& application : applications_) {
        if (application.get() == &requested) requestActivation(application);
      }
    };
    machine.pastedString = [this] { return pasteboard_.pastedString(); };
    machine.copyString = [this](const std::string& text, double delay) {
      if (delay <= 0) {
        pasteboard_.otherProgramCopiesString(text);
      } else {
        dispatch_.mainQueue().asyncAfter(
            delay, [this, text] { pasteboard_.otherProgramCopiesString(text); });
      }
    };
    machine.character = [this](std::uint16_t keyCode) { return layout_.character(keyCode); };
    auto application = std::make_shared<Application>(std::move(description), std::move(machine));
    applications_.push_back(application);
    return application;
  }
  /// Puts a program in front now; null for none.
  void bringToFront(const std::shared_ptr<Application>& application) {
    const bool hostWasInFront = hostIsInFront();
    frontmost_ = application;
    if (hostActivityHandler_ && hostIsInFront() != hostWasInFront) {
      hostActivityHandler_(hostIsInFront());
    }
  }
  const std::shared_ptr<Application>& frontmost() const { return frontmost_; }
  const std::shared_ptr<Application>& host() const { return host_; }
  bool hostIsInFront() const { return frontmost_ == host_; }
  /// For the machine: told when the host comes to the front or leaves it.
  void setHostActivityHandler(std::function<void(bool isActive)> handler) {
    hostActivityHandler_ = std::move(handler);
  }

  /// Seconds from a request until it takes effect.
  void setActivationTime(double seconds) { activationTime_ = seconds; }
  /// For the machine: `application` comes to the front after the activation time.
  void requestActivation(const std::shared_ptr<Application>& application) {
    dispatch_.mainQueue().asyncAfter(activationTime_,
                                     [this, application] { bringToFront(application); });
  }
  void setUsesCooperativeActivation(bool uses) { usesCooperativeActivation_ = uses; }
  /// The host runs without a bundle, and so without an identifier.
  void forgetHostBundle() {
    const bool wasInFront = hostIsInFront();
    host_ = start({"", "Zephyx", nullptr});
    if (wasInFront) frontmost_ = host_;
  }

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
