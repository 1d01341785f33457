#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Platform/Window.h"

namespace zephyx {

class RunningApplication;

/// What the system asks of and tells the host. Main thread.
class ApplicationDelegate {
 public:
  virtual ~ApplicationDelegate() = default;

  /// Makes the windows of the application's interface file. Called once, before
  /// `applicationDidFinishLaunching`.
  virtual void loadInterface() = 0;
  virtual void applicationDidFinishLaunching() = 0;
  virtual bool applicationShouldTerminateAfterLastWindowClosed() = 0;
  virtual bool applicationSupportsSecureRestorableState() = 0;
  /// The user started the application again while it runs.
  virtual void applicationShouldHandleReopen() = 0;
};

/// The running host. Main thread.
class Application {
 public:
  virtual ~Application() = default;

  /// Runs until `terminate`, calling the delegate; returns the process's exit status.
  virtual int run(ApplicationDelegate& delegate) = 0;
  /// Null before `run`.
  virtual ApplicationDelegate* delegate() const = 0;
  /// Asks the main loop to end; returns at once.
  virtual void terminate() = 0;

  /// Empty when the program does not run from a bundle.
  virtual std::string bundleIdentifier() const = 0;

  virtual std::shared_ptr<Window> makeWindow(const WindowConfiguration& configuration) = 0;
  /// The living windows made by `makeWindow`, in the order of their creation.
  virtual std::vector<std::shared_ptr<Window>> windows() const = 0;
  /// Null when no window of `windows()` has the keyboard; also, on some systems, between one window
  /// that resigns and the next, while the first one's observers are called.
  virtual std::shared_ptr<Window> keyWindow() const = 0;
  /// True while a file dialog of this process is on screen, whoever opened it.
  virtual bool hasVisibleSavePanel() const = 0;

  /// True while the host is the application in front.
  virtual bool isActive() const = 0;
  /// Brings the host to the front, whatever application is active.
  virtual void activateIgnoringOtherApps() = 0;
};

}  // namespace zephyx
