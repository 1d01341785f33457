#include "Runner/AppDelegate.h"

#include <algorithm>
#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/HotKeys.h"
#include "Platform/Platform.h"
#include "Platform/SystemLog.h"
#include "Platform/Workspace.h"
#include "Runner/AgentUsageMenuItem.h"
#include "Runner/BrightnessMenuItemView.h"
#include "Runner/ClaudeUsageProvider.h"
#include "Runner/ClipboardMonitor.h"
#include "Runner/ClipboardPanelController.h"
#include "Runner/ExternalDisplayBrightness.h"
#include "Runner/HotkeyManager.h"
#include "Runner/InputLockController.h"
#include "Runner/InputLockMenuItemView.h"
#include "Runner/MainFlutterWindow.h"
#include "Runner/MicrophoneMuteController.h"
#include "Runner/SelectionCapture.h"
#include "Runner/StatusMenu.h"
#include "Runner/SystemMonitorMenuView.h"
#include "Runner/TelemetryRelay.h"
#include "Runner/TranslatePanelController.h"
#include "Runner/UpdaterService.h"
#include "Runner/UsageProvider.h"

namespace zephyx {
namespace {

constexpr double squareStatusItemLength = -2;
constexpr const char* statusSymbol = "note.text";
constexpr const char* statusDescription = "Zephyx";
constexpr const char* mutedSymbol = "mic.slash.fill";
constexpr const char* mutedDescription = "Zephyx — microphone muted";
constexpr const char* keyboardLockTitle = "Lock Keyboard for Cleaning";

constexpr const char* shortcutUsed = "shortcutUsed";
constexpr const char* exportAllNotes = "exportAllNotes";
constexpr const char* importNotes = "importNotes";
constexpr const char* openSettings = "openSettings";
constexpr const char* headlessCaptureEditor = "headlessCaptureEditor";
constexpr const char* micToggled = "mic_toggled";

/// Logged when a hotkey fires; null for those that say nothing.
const char* firedLine(HotkeyID id) {
  switch (id) {
    case HotkeyID::togglePopover:
      return nullptr;
    case HotkeyID::clipboardPanel:
      return "[Clipboard] hotkey Shift+Cmd+V (id=2) fired";
    case HotkeyID::translate:
      return "[Translate] hotkey Control+Option+Cmd+T (id=3) fired";
    case HotkeyID::spelling:
      return "[Translate] hotkey Control+Option+Cmd+O (id=4) fired";
    case HotkeyID::improve:
      return "[Translate] hotkey Control+Option+Cmd+E (id=5) fired";
    case HotkeyID::restoreLast:
      return "[Translate] hotkey Control+Option+Cmd+L (id=6) fired — restore last";
    case HotkeyID::trackpadLock:
      return "[InputLock] hotkey (id=8) fired — toggle trackpad lock";
    case HotkeyID::keyboardLock:
      return "[InputLock] hotkey (id=9) fired — lock keyboard";
    case HotkeyID::micMute:
      return "[MicMute] hotkey (id=10) fired — toggle mic mute";
  }
  return nullptr;
}

}  // namespace

AppDelegate::AppDelegate(Platform& platform)
    : AppDelegate(platform, std::make_shared<ClaudeUsageProvider>(platform)) {}

AppDelegate::AppDelegate(Platform& platform, std::shared_ptr<UsageProvider> usageProvider)
    : platform_(platform),
      application_(platform.application()),
      usageProvider_(std::move(usageProvider)) {}

AppDelegate::~AppDelegate() = default;

void AppDelegate::loadInterface() {
  mainFlutterWindow_ = std::make_shared<MainFlutterWindow>(platform_, *this);
  mainFlutterWindow_->awakeFromNib();
}

void AppDelegate::applicationDidFinishLaunching() {
  HotkeyManager::shared().loadConfigs(platform_.userDefaults());
  makeStatusItem();
  registerGlobalHotkey();
  ClipboardPanelController::shared().initialize();
  TranslatePanelController::shared().initialize();
  showMainWindow();
}

void AppDelegate::makeStatusItem() {
  auto& hotkeys = HotkeyManager::shared();
  statusItem_ = platform_.statusBar().makeStatusItem(squareStatusItemLength);
  systemMonitorView_ = std::make_shared<SystemMonitorMenuView>(
      platform_.dispatch(), platform_.hostStatistics(), platform_.temperatureSensors());
  agentUsage_ = std::make_unique<AgentUsageMenuItem>(platform_, usageProvider_, *statusItem_);
  brightnessView_ = std::make_shared<BrightnessMenuItemView>(ExternalDisplayBrightness::shared());
  inputLock_ = std::make_unique<InputLockController>(platform_);
  keyboardLockItemView_ = std::make_shared<InputLockMenuItemView>(InputLockTarget::keyboard,
                                                                  keyboardLockTitle, *inputLock_);
  keyboardLockItemView_->onToggle =
      lifetime_.wrap([this] { handleInputLockToggle(InputLockTarget::keyboard); });
  statusMenu_ = std::make_unique<StatusMenu>(
      *this, hotkeys, platform_.userDefaults(), platform_.softwareUpdate(),
      StatusMenu::ViewRows{
          .systemMonitor = MenuItem::withView("System Monitor", systemMonitorView_),
          .agentUsage = agentUsage_->item(),
          .brightness = MenuItem::withView(BrightnessMenuItemView::title, brightnessView_),
          .keyboardLock = MenuItem::withView(keyboardLockTitle, keyboardLockItemView_),
      },
      StatusMenu::Actions{
          .toggleTrackpadLock =
              lifetime_.wrap([this] { handleInputLockToggle(InputLockTarget::trackpad); }),
          .toggleMicMute = lifetime_.wrap([this] { toggleMicMute(); }),
          .togglePopover = lifetime_.wrap([this] { togglePopover(); }),
          .exportAllNotes = lifetime_.wrap([this] { sendFromMainWindow(exportAllNotes); }),
          .importNotes = lifetime_.wrap([this] { sendFromMainWindow(importNotes); }),
          .openSettings = lifetime_.wrap([this] { sendFromMainWindow(openSettings); }),
          .checkForUpdates = [&updater = UpdaterService::shared()] { updater.checkForUpdates(); },
          .quitApp = lifetime_.wrap([this] { application_.terminate(); }),
      });
  followInputLock();
  followMicrophone();
  hotkeys.toggleMenuItem = statusMenu_->toggleItem();
  statusItem_->setMenu(statusMenu_->menu());
}

void AppDelegate::followInputLock() {
  inputLock_->onStateChange = lifetime_.wrap([this] { refreshInputLockItems(); });
  refreshInputLockItems();
}

void AppDelegate::followMicrophone() {
  auto& microphone = MicrophoneMuteController::shared();
  microphone.onStateChange = [&mainQueue = platform_.dispatch().mainQueue(),
                              refresh = lifetime_.wrap([this] {
                                refreshMicMuteItem();
                                updateMicIndicator();
                              })] { mainQueue.async(refresh); };
  refreshMicMuteItem();
  updateMicIndicator();
  microphone.installDefaultDeviceListener();
}

void AppDelegate::registerGlobalHotkey() {
  auto& hotkeys = HotkeyManager::shared();
  hotkeyHandler_ = platform_.hotKeys().setPressedHandler(
      [this, signature = hotkeys.signature()](HotKeyIdentity identity) {
        if (identity.signature != signature) return;
        platform_.dispatch().mainQueue().async(
            lifetime_.wrap([this, id = identity.id] { dispatchHotkey(id); }));
      });
  hotkeys.registerAll();
}

void AppDelegate::dispatchHotkey(std::uint32_t number) {
  if (const auto channel = methodChannel.lock()) {
    channel->invokeMethod(shortcutUsed, Map{{"id", std::int64_t{number}}});
  }
  const auto id = hotkeyId(number);
  if (!id) return;
  if (const auto* line = firedLine(*id)) platform_.systemLog().log(line);

  switch (*id) {
    case HotkeyID::togglePopover:
      togglePopover();
      break;
    case HotkeyID::clipboardPanel:
      ClipboardPanelController::shared().rememberFrontmostApp();
      ClipboardPanelController::shared().showPanel();
      break;
    case HotkeyID::translate:
      captureAndShowPanel("translate");
      break;
    case HotkeyID::spelling:
      captureAndShowPanel("spelling");
      break;
    case HotkeyID::improve:
      captureAndShowPanel("improve");
      break;
    case HotkeyID::restoreLast:
      restoreLastPanel();
      break;
    case HotkeyID::trackpadLock:
      handleInputLockToggle(InputLockTarget::trackpad);
      break;
    case HotkeyID::keyboardLock:
      handleInputLockToggle(InputLockTarget::keyboard);
      break;
    case HotkeyID::micMute:
      toggleMicMute();
      break;
  }
}

bool AppDelegate::isEditorActive() const {
  return mainFlutterWindow_ && mainFlutterWindow_->window().isKeyWindow();
}

void AppDelegate::captureAndShowPanel(const std::string& mode) {
  const bool editorActive = isEditorActive();
  rememberAiPasteTarget(editorActive);
  auto& panel = TranslatePanelController::shared();
  if (editorActive) {
    platform_.systemLog().log("[Translate] captureAndShowPanel: origen editor (mode=" + mode + ")");
    panel.showPanel();
    if (const auto channel = methodChannel.lock()) {
      channel->invokeMethod(headlessCaptureEditor, Map{{"mode", mode}});
    }
    return;
  }
  SelectionCapture::capture(lifetime_.wrap([&panel, mode](const std::optional<std::string>& text) {
    panel.showPanel();
    panel.deliver(text, panel.captureEpoch(), mode);
  }));
}

void AppDelegate::restoreLastPanel() {
  const bool editorActive = isEditorActive();
  rememberAiPasteTarget(editorActive);
  TranslatePanelController::shared().showPanel(editorActive ? "editor" : "external");
}

void AppDelegate::rememberAiPasteTarget(bool editorActive) {
  auto frontmost = platform_.workspace().frontmostApplication();
  const auto identifier = frontmost ? frontmost->bundleIdentifier() : std::string();
  if (!editorActive && identifier == application_.bundleIdentifier()) {
    platform_.systemLog().log(
        "[Translate] rememberAiPasteTarget: frontmost es Zephyx sin editor key — se conserva el "
        "destino externo anterior");
    return;
  }
  ClipboardMonitor::shared().rememberedApp = std::move(frontmost);
}

std::shared_ptr<Window> AppDelegate::mainWindow() const {
  const auto windows = application_.windows();
  return windows.empty() ? nullptr : windows.front();
}

void AppDelegate::togglePopover() {
  const auto window = mainWindow();
  if (!window) return;
  if (window->isVisible()) {
    window->orderOut();
    if (previousFrontmostApp_) previousFrontmostApp_->activateIgnoringOtherApps();
    return;
  }
  previousFrontmostApp_ = platform_.workspace().frontmostApplication();
  if (previousFrontmostApp_ &&
      previousFrontmostApp_->bundleIdentifier() == application_.bundleIdentifier()) {
    previousFrontmostApp_.reset();
  }
  showMainWindow();
}

void AppDelegate::showMainWindow() {
  const auto window = mainWindow();
  if (!window) return;
  auto& screens = platform_.screens();
  if (const auto main = screens.mainScreenIndex(); main >= 0) {
    const auto visible = screens.screens().at(static_cast<std::size_t>(main)).visibleFrame;
    const Size size{std::clamp(0.8 * visible.size.width, 900.0, 1400.0),
                    std::clamp(0.85 * visible.size.height, 600.0, 900.0)};
    window->setFrame(
        {{visible.midX() - size.width * 0.5, visible.midY() - size.height * 0.5}, size});
    window->center();
  }
  window->configure([](WindowConfiguration& c) {
    c.alpha = 1.0;
    c.level = windowLevel::status;
    c.collectionBehavior = mainWindowCollectionBehavior;
  });
  window->makeKeyAndOrderFront();
  application_.activateIgnoringOtherApps();
}

void AppDelegate::applicationShouldHandleReopen() {
  const auto window = mainWindow();
  if (window && window->isVisible()) {
    showMainWindow();
  } else {
    togglePopover();
  }
}

void AppDelegate::sendFromMainWindow(const std::string& method) {
  const auto window = mainWindow();
  if (window && !window->isVisible()) togglePopover();
  if (const auto channel = methodChannel.lock()) channel->invokeMethod(method);
}

void AppDelegate::handleInputLockToggle(InputLockTarget target) {
  // An open menu has the devices for itself.
  statusItem_->cancelTrackingWithoutAnimation();
  platform_.dispatch().mainQueue().async(lifetime_.wrap([this, target] {
    const auto active = inputLock_->activeLock();
    if (!active) {
      inputLock_->lock(target);
    } else if (*active == target) {
      inputLock_->unlock();
    }
  }));
}

void AppDelegate::refreshInputLockItems() {
  keyboardLockItemView_->applyState();
  statusMenu_->refreshTrackpadLockItem(inputLock_->activeLock() == InputLockTarget::trackpad);
}

void AppDelegate::toggleMicMute() {
  auto& microphone = MicrophoneMuteController::shared();
  microphone.setMuted(!microphone.isMuted());
  TelemetryRelay::shared().track(micToggled, {{"muted", microphone.isMuted() ? "true" : "false"}});
  refreshMicMuteItem();
  updateMicIndicator();
}

void AppDelegate::refreshMicMuteItem() {
  const auto& microphone = MicrophoneMuteController::shared();
  statusMenu_->refreshMicMuteItem(microphone.hasMicrophone() ? std::optional(microphone.isMuted())
                                                             : std::nullopt);
}

void AppDelegate::updateMicIndicator() {
  if (MicrophoneMuteController::shared().isMuted()) {
    statusItem_->setImage(mutedSymbol, mutedDescription);
  } else {
    statusItem_->setImage(statusSymbol, statusDescription);
  }
}

void AppDelegate::menuNeedsUpdate(Menu&) {
  const auto window = mainWindow();
  statusMenu_->refreshToggleTitle(window && window->isVisible());
  HotkeyManager::shared().updateToggleMenuItem();  // the keyboard layout may be another one
  statusMenu_->refreshSettingsShortcutHint();
  refreshInputLockItems();
  refreshMicMuteItem();
}

void AppDelegate::menuWillOpen(Menu&) {
  systemMonitorView_->startMonitoring();
  brightnessView_->refresh();
  agentUsage_->menuWillOpen();
}

void AppDelegate::menuDidClose(Menu&) {
  systemMonitorView_->stopMonitoring();
}

}  // namespace zephyx
