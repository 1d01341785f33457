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
class ViewWindow;
class WindowHints;

/// A frameless top-level window whose content is a view controller's picture or a tree of the
/// host's own views. The system's window and the picture are made when it is first shown.
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
  void setContentView(std::shared_ptr<View> view) override;
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
  QWindow* makePictureWindow(Qt::WindowFlags flags);
  QWindow* makeViewWindow(Qt::WindowFlags flags);
  void discardWindow();
  void setContent(std::shared_ptr<LinuxFlutterViewController> controller,
                  std::shared_ptr<View> view);
  void applyGeometry();
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
  std::shared_ptr<View> contentView_;
  // One of the two, by the kind of content; `window_` is what they have in common.
  std::unique_ptr<HostWindow> pictureWindow_;
  std::unique_ptr<ViewWindow> viewWindow_;
  QWindow* window_ = nullptr;
};

}  // namespace zephyx
