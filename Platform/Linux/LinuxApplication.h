#pragma once

#include <QtCore/QObject>
#include <vector>

#include "Platform/Application.h"
#include "Platform/Linux/TerminationSignals.h"
#include "Platform/Linux/Windows/KeyWindowTracker.h"
#include "Platform/Linux/Windows/LinuxWindow.h"

namespace zephyx {

class SingleInstance;
class WindowHints;

/// The host on the toolkit's main loop.
class LinuxApplication final : public Application {
 public:
  LinuxApplication(DesktopWatch& watch, LocalNotificationCenter& center, SingleInstance& instance,
                   WindowHints& hints);
  ~LinuxApplication() override;

  int run(ApplicationDelegate& delegate) override;
  ApplicationDelegate* delegate() const override { return delegate_; }
  void terminate() override;
  /// The desktop-file id.
  std::string bundleIdentifier() const override;

  std::shared_ptr<Window> makeWindow(const WindowConfiguration& configuration) override;
  std::vector<std::shared_ptr<Window>> windows() const override;
  std::shared_ptr<Window> keyWindow() const override;
  bool hasVisibleSavePanel() const override;
  bool isActive() const override { return keyTracker_.isActive(); }
  void activateIgnoringOtherApps() override;

 private:
  class DialogPlacer;

  std::vector<std::shared_ptr<LinuxWindow>> livingWindows() const;

  DesktopWatch& watch_;
  SingleInstance& instance_;
  WindowHints& hints_;
  KeyWindowTracker keyTracker_;
  TerminationSignals signals_;
  std::unique_ptr<DialogPlacer> dialogPlacer_;
  std::vector<std::weak_ptr<LinuxWindow>> windows_;
  ApplicationDelegate* delegate_ = nullptr;
};

}  // namespace zephyx
