#pragma once

#include <memory>
#include <string>

namespace zephyx {

class Image;

/// A running application, as it was met: on systems where focus belongs to windows, also the window
/// that was in front then. Main thread, except where a method says otherwise.
class RunningApplication {
 public:
  virtual ~RunningApplication() = default;

  /// Empty when unknown. Any thread.
  virtual std::string bundleIdentifier() const = 0;
  /// Empty when unknown. Any thread.
  virtual std::string localizedName() const = 0;
  /// Null when there is none. Any thread; may read files.
  virtual std::shared_ptr<Image> icon() const = 0;

  /// True while it (and the window that was met) has the keyboard, as the system says now.
  virtual bool isActive() const = 0;
  /// Asks for activation, ignoring other applications (option value 2); returns at once with
  /// whether the request could be made, before it has taken effect.
  virtual bool activateIgnoringOtherApps() = 0;
  /// Yields activation to it and asks it to activate from this application (cooperative
  /// activation); result as above.
  virtual bool activateCooperatively() = 0;
};

/// Other applications and the system's own file and URL services.
class Workspace {
 public:
  virtual ~Workspace() = default;

  /// Null when no application is in front. Any thread.
  virtual std::shared_ptr<RunningApplication> frontmostApplication() const = 0;
  /// True where applications must yield activation to each other (macOS 14.0 and later).
  virtual bool usesCooperativeActivation() const = 0;

  /// Opens a URL with the user's program for it; returns at once. Main thread.
  virtual void openUrl(const std::string& url) = 0;
  /// Shows a file, selected, in the file manager; returns at once. Main thread.
  virtual void activateFileViewerSelecting(const std::string& path) = 0;
};

}  // namespace zephyx
