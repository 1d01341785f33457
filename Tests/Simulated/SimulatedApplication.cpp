#include "Tests/Simulated/SimulatedApplication.h"

#include "Platform/LocalNotificationCenter.h"
#include "Tests/Simulated/SimulatedDispatch.h"
#include "Tests/Simulated/SimulatedWindow.h"
#include "Tests/Simulated/SimulatedWorkspace.h"

namespace zephyx {
namespace {
constexpr double longestRun = 3600;
}

SimulatedApplication::SimulatedApplication(SimulatedDispatch& dispatch,
                                           SimulatedWorkspace& workspace,
                                           LocalNotificationCenter& notificationCenter,
                                           const Screens& screens)
    : dispatch_(dispatch),
      workspace_(workspace),
      notificationCenter_(notificationCenter),
      screens_(screens) {
  workspace_.setHostActivityHandler([this](bool isActive) { hostActivityChanged(isActive); });
}

void SimulatedApplication::launch(ApplicationDelegate& delegate) {
  delegate_ = &delegate;
  delegate.loadInterface();
  delegate.applicationDidFinishLaunching();
}

int SimulatedApplication::run(ApplicationDelegate& delegate) {
  launch(delegate);
  return dispatch_.runUntil([this] { return isTerminated_; }, longestRun) ? 0 : 1;
}

std::string SimulatedApplication::bundleIdentifier() const {
  return workspace_.host()->bundleIdentifier();
}

std::shared_ptr<Window> SimulatedApplication::makeWindow(const WindowConfiguration& configuration) {
  dispatch_.requireMainThread("makeWindow");
  auto window = std::make_shared<SimulatedWindow>(configuration, *this, screens_);
  windows_.push_back(window);
  return window;
}

std::vector<std::shared_ptr<SimulatedWindow>> SimulatedApplication::simulatedWindows() const {
  std::vector<std::shared_ptr<SimulatedWindow>> alive;
  for (const auto& window : windows_) {
    if (auto strong = window.lock()) alive.push_back(std::move(strong));
  }
  return alive;
}

std::vector<std::shared_ptr<Window>> SimulatedApplication::windows() const {
  const auto alive = simulatedWindows();
  return {alive.begin(), alive.end()};
}

std::shared_ptr<Window> SimulatedApplication::keyWindow() const {
  return key_.lock();
}

bool SimulatedApplication::isActive() const {
  return workspace_.hostIsInFront();
}

void SimulatedApplication::activateIgnoringOtherApps() {
  dispatch_.requireMainThread("activateIgnoringOtherApps");
  if (!workspace_.hostIsInFront()) workspace_.requestActivation(workspace_.host());
}

void SimulatedApplication::openSavePanel() {
  savePanelIsOpen_ = true;
  takeKeyboardAway();
}

void SimulatedApplication::takeKeyboardAway() {
  if (!workspace_.hostIsInFront()) workspace_.bringToFront(workspace_.host());
  wantsKey_.reset();
  setKeyWindow(nullptr);
}

void SimulatedApplication::windowWantsKey(SimulatedWindow& window) {
  if (!window.configuration().canBecomeKey) return;
  for (auto& candidate : simulatedWindows()) {
    if (candidate.get() != &window) continue;
    wantsKey_ = candidate;
    if (workspace_.hostIsInFront()) setKeyWindow(candidate);
    return;
  }
}

void SimulatedApplication::windowIsGone(SimulatedWindow& window) {
  if (wantsKey_.lock().get() == &window) wantsKey_.reset();
  if (key_.lock().get() == &window) setKeyWindow(frontmostCandidate());
}

std::shared_ptr<SimulatedWindow> SimulatedApplication::frontmostCandidate() const {
  std::shared_ptr<SimulatedWindow> best;
  for (auto& window : simulatedWindows()) {
    if (!window->isVisible() || !window->configuration().canBecomeKey) continue;
    if (!best || window->frontOrder() > best->frontOrder()) best = window;
  }
  return best;
}

void SimulatedApplication::hostActivityChanged(bool isActive) {
  if (!isActive) {
    wantsKey_ = key_;
    setKeyWindow(nullptr);
    notificationCenter_.post(notification::applicationDidResignActive, this);
    return;
  }
  const auto wanted = wantsKey_.lock();
  setKeyWindow(wanted && wanted->isVisible() ? wanted : frontmostCandidate());
}

void SimulatedApplication::setKeyWindow(std::shared_ptr<SimulatedWindow> window) {
  const auto old = key_.lock();
  if (old == window) return;
  key_.reset();
  if (old) notificationCenter_.post(notification::windowDidResignKey, old->notificationObject());
  if (key_.lock()) return;  // an observer has given it to another one
  key_ = window;
  if (window) {
    notificationCenter_.post(notification::windowDidBecomeKey, window->notificationObject());
  }
}

}  // namespace zephyx
