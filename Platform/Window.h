#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "Platform/Geometry.h"

namespace zephyx {

class FlutterViewController;
class View;

/// Bits of a window's style mask.
namespace styleMask {
inline constexpr std::uint64_t borderless = 0;
inline constexpr std::uint64_t titled = 1 << 0;
inline constexpr std::uint64_t closable = 1 << 1;
inline constexpr std::uint64_t miniaturizable = 1 << 2;
inline constexpr std::uint64_t resizable = 1 << 3;
inline constexpr std::uint64_t fullSizeContentView = 1 << 15;
}  // namespace styleMask

/// Bits of a window's collection behaviour.
namespace collectionBehavior {
inline constexpr std::uint64_t moveToActiveSpace = 1 << 1;
inline constexpr std::uint64_t transient = 1 << 3;
inline constexpr std::uint64_t stationary = 1 << 4;
inline constexpr std::uint64_t ignoresCycle = 1 << 6;
inline constexpr std::uint64_t fullScreenAuxiliary = 1 << 8;
}  // namespace collectionBehavior

namespace windowLevel {
inline constexpr int normal = 0;
inline constexpr int status = 25;
}  // namespace windowLevel

enum class WindowKind { window, panel };

/// Everything about a window that the host sets as a property, in AppKit's terms.
struct WindowConfiguration {
  WindowKind kind = WindowKind::window;  ///< fixed at creation
  Rect contentRect;                      ///< used at creation only
  std::string title;
  std::uint64_t styleMask = styleMask::borderless;
  Size minimumSize;
  int level = windowLevel::normal;
  std::uint64_t collectionBehavior = 0;
  double alpha = 1.0;
  bool titlebarAppearsTransparent = false;
  bool titleHidden = false;
  bool standardButtonsHidden = false;
  bool movableByWindowBackground = false;
  bool floatingPanel = false;
  bool hidesOnDeactivate = false;
  bool transparentBackground = false;  ///< clear background colour and not opaque
  bool hasShadow = true;
  bool ignoresMouseEvents = false;  ///< clicks go to what lies beneath
  bool canBecomeKey = true;         ///< fixed at creation
  bool canBecomeMain = true;        ///< fixed at creation

  bool operator==(const WindowConfiguration&) const = default;
};

/// One window of the host. Main thread. Becoming and losing key status is posted to the default
/// notification centre with `notificationObject()`.
class Window {
 public:
  explicit Window(WindowConfiguration configuration) : configuration_(std::move(configuration)) {}
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  virtual ~Window() = default;

  const WindowConfiguration& configuration() const { return configuration_; }

  /// Changes properties; `change` edits a copy, which takes effect as a whole.
  template <typename Change>
  void configure(Change change) {
    auto next = configuration_;
    change(next);
    if (next == configuration_) return;
    configuration_ = std::move(next);
    applyConfiguration();
  }

  virtual Rect frame() const = 0;
  virtual void setFrame(Rect frame) = 0;  ///< and draws at once
  virtual void center() = 0;

  virtual bool isVisible() const = 0;
  virtual bool isKeyWindow() const = 0;
  virtual void makeKeyAndOrderFront() = 0;
  virtual void orderFrontRegardless() = 0;
  virtual void orderOut() = 0;

  /// Shares ownership of the controller. Null takes the content out (engine teardown).
  virtual void setContentViewController(std::shared_ptr<FlutterViewController> controller) = 0;

  /// Shows a tree of the host's own views, of the window's size, in place of a view controller.
  /// Shares ownership. Null takes it out.
  virtual void setContentView(std::shared_ptr<View> view) = 0;

  /// Gives the content view the keyboard within the window.
  virtual void makeContentFirstResponder() = 0;

  /// For the log: what has the keyboard within the window, "nil" for nothing.
  virtual std::string firstResponderDescription() const = 0;

  /// Identifies this window to a `NotificationCenter`.
  virtual const void* notificationObject() const { return this; }

 protected:
  /// Brings the system's window in line with `configuration()`.
  virtual void applyConfiguration() = 0;

 private:
  WindowConfiguration configuration_;
};

/// One screen as it is now; not to be kept.
struct Screen {
  Rect frame;
  Rect visibleFrame;  ///< without menu bar, Dock and panels
};

/// The screens and the pointer. Main thread.
class Screens {
 public:
  virtual ~Screens() = default;
  virtual std::vector<Screen> screens() const = 0;
  /// Index into `screens()` of the screen with the keyboard focus, -1 if there is none.
  virtual int mainScreenIndex() const = 0;
  virtual Point mouseLocation() const = 0;
};

}  // namespace zephyx
