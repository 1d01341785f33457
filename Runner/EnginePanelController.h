#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Channel/MethodChannel.h"
#include "Platform/FlutterEngine.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Platform.h"
#include "Platform/Registration.h"
#include "Platform/Window.h"

namespace zephyx {

class SystemLog;

/// What tells one engine panel from another.
struct EnginePanelTraits {
  std::string logTag;  ///< with its brackets
  std::string engineName;
  std::string entryPoint;
  Size size;  ///< of the content when shown, points
  bool hasShadow = true;
  bool logsEveryStep = true;  ///< of initialising, not only its start, run and end
};

/// An engine in a panel: a lazily made engine whose picture fills a borderless, transparent,
/// floating panel that takes the keyboard but never becomes the main window, with a method channel
/// to the engine. Shows it on the screen under the pointer and pastes into the remembered
/// application. Main thread. Lives until the platform ends.
class EnginePanelController {
 public:
  EnginePanelController(const EnginePanelController&) = delete;
  EnginePanelController& operator=(const EnginePanelController&) = delete;
  virtual ~EnginePanelController();

  /// Makes engine, channel and panel; does nothing the second time.
  void initialize();

  /// Null until initialised.
  const std::shared_ptr<Window>& panel() const { return panel_; }
  const std::shared_ptr<MethodChannel>& methodChannel() const { return methodChannel_; }

 protected:
  EnginePanelController(Platform& platform, EnginePanelTraits traits);

  /// The channel exists and is handled; the panel does not exist yet.
  virtual void didCreateChannel() = 0;
  /// The panel exists, with its picture.
  virtual void didBuildPanel() {}
  virtual void panelDidResignKey() = 0;
  /// A call that is not about updates.
  virtual void handle(const MethodCall& call, MethodResult result) = 0;

  /// True when there is a panel, if need be after one more try to make it.
  bool ensurePanel();
  /// Centres the panel on the visible frame of the pointer's screen.
  void placeOnPointerScreen();
  void bringToFront();
  /// Keyboard to the panel and to its picture.
  void takeFocus();

  /// Hides by `hide` on the next turn, brings the paste target forward, types the paste chord if
  /// need be, and answers "pasted"; without the Accessibility permission answers "notTrusted" and
  /// leaves the panel as it is.
  void handlePaste(std::function<void()> hide, MethodResult result);
  void handleOpenUrl(const MethodCall& call, MethodResult result);

  /// Calls `handler` for each notification of that name and object while this object lives.
  void observe(const char* notification, const void* object, std::function<void()> handler);

  /// Lays a frosted background behind a card. `card` has the numbers "x", "y", "w", "h" from the
  /// top left; false, and nothing changed, when one is missing or not finite.
  bool placeCardBackground(VisualEffectView& background, const Value& card, double cornerRadius);

  void log(const std::string& message);
  void logStep(const std::string& message);

  Platform& platform_;
  const EnginePanelTraits traits_;
  std::shared_ptr<FlutterEngine> engine_;
  std::shared_ptr<Window> panel_;
  std::shared_ptr<FlutterViewController> viewController_;
  std::shared_ptr<MethodChannel> methodChannel_;

 private:
  std::shared_ptr<Window> buildPanel(const std::shared_ptr<FlutterViewController>& controller);

  bool isInitialized_ = false;
  std::vector<Registration> observers_;

 protected:
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
