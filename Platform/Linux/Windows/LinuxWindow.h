#pragma once

#include <QtCore/QRect>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Window.h"

class QWindow;

namespace zephyx {

class DesktopWatch;
class HostWindow;
class KeyWindowTracker;
class LinuxFlutterViewController;
class WindowHints;

/// A frameless top-level window whose content is a view controller's picture. The system's window
/// and the picture are made when it is first shown.
class LinuxWindow final : public Window {
 public:
  LinuxWindow(WindowConfiguration configuration, WindowHints& hints, KeyWindowTracker& keyTracker,
              DesktopWatch& watch);
  ~LinuxWindow() override;

  Rect frame() const override;
  void setFrame(Rect frame) override;
  void center() override;

  bool isVisible() const override;
  bool isKeyWindow() const override;
  void makeKeyAndOrderFront() override;
  void orderFrontRegardless() override;
  void orderOut() override;

  void setContentViewController(std::shared_ptr<FlutterViewController> controller) override;
  void makeContentFirstResponder() override;
  std::string firstResponderDescription() const override;

  /// The X window; 0 before it exists.
  unsigned int nativeId() const;
  /// Asks for the keyboard; for a window that is on the screen.
  void activate();
  /// Makes `dialog` stay above this window.
  void keepAbove(QWindow& dialog);

 protected:
  void applyConfiguration() override;

 private:
  void ensureWindow();
  void show(bool activating);
  void attachContent();
  void followWindow();
  void resizeContent();
  void applyBackground();
  bool isSeeThrough() const;
  bool isAbove() const { return configuration().level > windowLevel::normal; }
  std::vector<std::string> states() const;

  WindowHints& hints_;
  KeyWindowTracker& keyTracker_;
  DesktopWatch& watch_;
  QRect geometry_;
  bool wasAbove_ = false;
  bool hasSeeThroughVisual_ = false;
  std::shared_ptr<LinuxFlutterViewController> content_;
  std::unique_ptr<HostWindow> window_;
};

}  // namespace zephyx
