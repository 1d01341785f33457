#pragma once

#include "Platform/Application.h"

namespace zephyx {

class LocalNotificationCenter;
class SimulatedDispatch;
class SimulatedWindow;
class SimulatedWorkspace;

/// The host as an application: its windows, and which of them has the keyboard. A window that asks
/// for the keyboard gets it when the host is, or comes, in front.
class SimulatedApplication final : public Application {
 public:
  SimulatedApplication(SimulatedDispatch& dispatch, SimulatedWorkspace& workspace,
                       LocalNotificationCenter& notificationCenter, const Screens& screens);

  int run(ApplicationDelegate& delegate) override;
  ApplicationDelegate* delegate() const override { return delegate_; }
  void terminate() override { isTerminated_ = true; }
  std::string bundleIdentifier() const override;
  std::shared_ptr<Window> makeWindow(const WindowConfiguration& configuration) override;
  std::vector<std::shared_ptr<Window>> windows() const override;
  std::shared_ptr<Window> keyWindow() const override;
  bool hasVisibleSavePanel() const override { return savePanelIsOpen_; }
  bool isActive() const override;
  void activateIgnoringOtherApps() override;

  /// What `run` does until the host is ready, without the main loop.
  void launch(ApplicationDelegate& delegate);
  void quitDelegate() { delegate_ = nullptr; }
  bool isTerminated() const { return isTerminated_; }
  /// A file dialog of the host comes up with the keyboard, and goes.
  void openSavePanel();
  void closeSavePanel() { savePanelIsOpen_ = false; }

  std::vector<std::shared_ptr<SimulatedWindow>> simulatedWindows() const;
  std::shared_ptr<SimulatedWindow> simulatedKeyWindow() const { return key_.lock(); }
  /// For the machine: something of this process that is no window of the host takes the keyboard.
  void takeKeyboardAway();

  // For the windows.
  void windowWantsKey(SimulatedWindow& window);
  void windowIsGone(SimulatedWindow& window);
  std::uint64_t nextFrontOrder() { return ++frontOrder_; }

 private:
  void hostActivityChanged(bool isActive);
  void setKeyWindow(std::shared_ptr<SimulatedWindow> window);
  std::shared_ptr<SimulatedWindow> frontmostCandidate() const;

  SimulatedDispatch& dispatch_;
  SimulatedWorkspace& workspace_;
  LocalNotificationCenter& notificationCenter_;
  const Screens& screens_;
  ApplicationDelegate* delegate_ = nullptr;
  std::vector<std::weak_ptr<SimulatedWindow>> windows_;
  std::weak_ptr<SimulatedWindow> key_;
  std::weak_ptr<SimulatedWindow> wantsKey_;  ///< gets the keyboard when the host is in front
  bool savePanelIsOpen_ = false;
  bool isTerminated_ = false;
  std::uint64_t frontOrder_ = 0;
};

}  // namespace zephyx
