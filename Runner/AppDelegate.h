#pragma once

#include <memory>
#include <string>

#include "Channel/MethodChannel.h"
#include "Platform/Application.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Menu.h"
#include "Platform/Registration.h"
#include "Runner/HotkeyId.h"
#include "Runner/InputLockTarget.h"

namespace zephyx {

class AgentUsageMenuItem;
class BrightnessMenuItemView;
class InputLockController;
class InputLockMenuItemView;
class MainFlutterWindow;
class Platform;
class StatusMenu;
class SystemMonitorMenuView;
class UsageProvider;

/// The application's delegate and that of its status menu: owns the main window, the status item
/// and its menu, and maps each global hotkey to its action. Main thread.
class AppDelegate final : public ApplicationDelegate, public MenuDelegate {
 public:
  explicit AppDelegate(Platform& platform);
  /// With another source of a coding agent's usage.
  AppDelegate(Platform& platform, std::shared_ptr<UsageProvider> usageProvider);
  ~AppDelegate() override;

  /// The main engine's channel, set by the main window.
  std::weak_ptr<MethodChannel> methodChannel;

  /// Null before the interface is loaded.
  const std::shared_ptr<MainFlutterWindow>& mainFlutterWindow() const { return mainFlutterWindow_; }

  /// Chooses where the result of an AI action goes: the application in front, which with the editor
  /// active is the program itself. With the program in front but not its editor, the earlier target
  /// is kept.
  void rememberAiPasteTarget(bool editorActive);

  /// Shows the main window, or hides it and gives the focus back.
  void togglePopover();

  void loadInterface() override;
  void applicationDidFinishLaunching() override;
  bool applicationShouldTerminateAfterLastWindowClosed() override { return false; }
  bool applicationSupportsSecureRestorableState() override { return true; }
  void applicationShouldHandleReopen() override;

  void menuNeedsUpdate(Menu& menu) override;
  void menuWillOpen(Menu& menu) override;
  void menuDidClose(Menu& menu) override;

 private:
  void makeStatusItem();
  void followInputLock();
  void followMicrophone();
  void registerGlobalHotkey();
  void dispatchHotkey(std::uint32_t id);
  bool isEditorActive() const;
  /// Shows the translate panel with the text that is selected, in the editor when that is active,
  /// else in the application in front.
  void captureAndShowPanel(const std::string& mode);
  void restoreLastPanel();
  /// Unlocks the target or, when nothing is locked, locks it. Closes the menu.
  void handleInputLockToggle(InputLockTarget target);
  void refreshInputLockItems();
  void toggleMicMute();
  /// The menu's row.
  void refreshMicMuteItem();
  /// The icon in the menu bar shows a muted microphone.
  void updateMicIndicator();
  void showMainWindow();
  void sendFromMainWindow(const std::string& method);
  /// The application's first window; null when it has none.
  std::shared_ptr<Window> mainWindow() const;

  Platform& platform_;
  Application& application_;
  std::shared_ptr<MainFlutterWindow> mainFlutterWindow_;
  std::shared_ptr<UsageProvider> usageProvider_;
  std::shared_ptr<SystemMonitorMenuView> systemMonitorView_;
  std::shared_ptr<BrightnessMenuItemView> brightnessView_;
  std::unique_ptr<InputLockController> inputLock_;
  std::shared_ptr<InputLockMenuItemView> keyboardLockItemView_;
  std::unique_ptr<StatusMenu> statusMenu_;
  std::shared_ptr<StatusItem> statusItem_;
  std::unique_ptr<AgentUsageMenuItem> agentUsage_;
  std::shared_ptr<RunningApplication> previousFrontmostApp_;
  Registration hotkeyHandler_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
