#include "Tests/Simulated/SimulatedWorkspace.h"

#include <utility>

#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedKeyboardLayout.h"
#include "Tests/Simulated/SimulatedPasteboard.h"

namespace zephyx {

SimulatedWorkspace::SimulatedWorkspace(SimulatedDispatch& dispatch, SimulatedPasteboard& pasteboard,
                                       const SimulatedKeyboardLayout& layout)
    : dispatch_(dispatch), pasteboard_(pasteboard), layout_(layout) {
  host_ = start({hostBundleIdentifier, "Zephyx", nullptr});
}

void SimulatedWorkspace::openUrl(const std::string& url) {
  dispatch_.requireMainThread("Workspace::openUrl");
  openedUrls_.push_back(url);
}

void SimulatedWorkspace::activateFileViewerSelecting(const std::string& path) {
  dispatch_.requireMainThread("Workspace::activateFileViewerSelecting");
  shownFiles_.push_back(path);
}

std::shared_ptr<SimulatedRunningApplication> SimulatedWorkspace::start(
    Application::Description description) {
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

void SimulatedWorkspace::requestActivation(const std::shared_ptr<Application>& application) {
  dispatch_.mainQueue().asyncAfter(activationTime_,
                                   [this, application] { bringToFront(application); });
}

void SimulatedWorkspace::bringToFront(const std::shared_ptr<Application>& application) {
  const bool hostWasInFront = hostIsInFront();
  frontmost_ = application;
  if (hostActivityHandler_ && hostIsInFront() != hostWasInFront) {
    hostActivityHandler_(hostIsInFront());
  }
}

void SimulatedWorkspace::setHostActivityHandler(std::function<void(bool isActive)> handler) {
  hostActivityHandler_ = std::move(handler);
}

void SimulatedWorkspace::forgetHostBundle() {
  const bool wasInFront = hostIsInFront();
  host_ = start({"", "Zephyx", nullptr});
  if (wasInFront) frontmost_ = host_;
}

}  // namespace zephyx
