#pragma once

#include <cstdint>
#include <memory>

#include "Channel/MethodChannel.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Registration.h"
#include "Platform/Window.h"
#include "Runner/AgentVisibilityChannelHandlers.h"
#include "Runner/HotkeyChannelHandlers.h"

namespace zephyx {

class AppDelegate;
class Application;
class Platform;

inline constexpr std::uint64_t mainWindowCollectionBehavior =
    collectionBehavior::moveToActiveSpace | collectionBehavior::transient |
    collectionBehavior::stationary | collectionBehavior::ignoresCycle |
    collectionBehavior::fullScreenAuxiliary;

/// The application's one ordinary window, with the notes editor and the settings in it, and the
/// channel "com.zephyx.app/menu" to the main engine. It hides when the user moves elsewhere. Main
/// thread.
class MainFlutterWindow {
 public:
  MainFlutterWindow(Platform& platform, AppDelegate& delegate);
  ~MainFlutterWindow();

  /// Puts the engine, the channel and the observers in place. Called once.
  void awakeFromNib();

  Window& window() const { return *window_; }
  const std::shared_ptr<MethodChannel>& methodChannel() const { return methodChannel_; }

 private:
  void setupGestureTracking();
  void didLoseKeyboard();
  void waitForFilePanelClose();
  void handle(const MethodCall& call, MethodResult result);
  void relayToken(const Value& arguments);
  void handleOpenUrl(const Value& arguments, MethodResult result);

  Platform& platform_;
  AppDelegate& delegate_;
  Application& application_;
  std::shared_ptr<Window> window_;
  std::shared_ptr<FlutterViewController> viewController_;
  std::shared_ptr<MethodChannel> methodChannel_;
  HotkeyChannelHandlers hotkeyHandlers_;
  AgentVisibilityChannelHandlers agentVisibilityHandlers_;
  Registration resignKeyObserver_;
  Registration becomeKeyObserver_;
  Registration spaceObserver_;
  Registration eventMonitor_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
