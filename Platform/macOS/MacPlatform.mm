#import "Platform/macOS/MacPlatform.h"

#import <AppKit/AppKit.h>

#import "Platform/macOS/MacAccessibility.h"
#import "Platform/macOS/MacAlerts.h"
#import "Platform/macOS/MacApplication.h"
#import "Platform/macOS/MacAudioHardware.h"
#import "Platform/macOS/MacDirectories.h"
#import "Platform/macOS/MacDispatch.h"
#import "Platform/macOS/MacDisplays.h"
#import "Platform/macOS/MacEventMonitors.h"
#import "Platform/macOS/MacEventPoster.h"
#import "Platform/macOS/MacEventTaps.h"
#import "Platform/macOS/MacFlutterEngines.h"
#import "Platform/macOS/MacHostStatistics.h"
#import "Platform/macOS/MacHotKeys.h"
#import "Platform/macOS/MacImages.h"
#import "Platform/macOS/MacKeyboardLayout.h"
#import "Platform/macOS/MacKeychain.h"
#import "Platform/macOS/MacNotificationCenter.h"
#import "Platform/macOS/MacPasteboard.h"
#import "Platform/macOS/MacPreviewPanel.h"
#import "Platform/macOS/MacScreens.h"
#import "Platform/macOS/MacSoftwareUpdate.h"
#import "Platform/macOS/MacStatusItem.h"
#import "Platform/macOS/MacSystemLog.h"
#import "Platform/macOS/MacTemperatureSensors.h"
#import "Platform/macOS/MacTextMetrics.h"
#import "Platform/macOS/MacUrlSession.h"
#import "Platform/macOS/MacUserDefaults.h"
#import "Platform/macOS/MacWorkspace.h"
#import "Platform/macOS/SingleInstance.h"

namespace zephyx {

/// Destroyed from the last to the first.
struct MacPlatform::Services {
  // Work of the queues may be using any service.
  ~Services() { dispatch.finishWork(); }

  MacApplication application;  // first, for it decides what kind of application this is
  MacSystemLog systemLog;
  MacDirectories directories;
  MacDispatch dispatch;
  MacNotificationCenter defaultCenter{NSNotificationCenter.defaultCenter};
  MacNotificationCenter workspaceCenter{NSWorkspace.sharedWorkspace.notificationCenter};
  MacUserDefaults userDefaults;
  MacImages images;
  MacWorkspace workspace;
  MacPasteboard pasteboard{dispatch};
  MacKeychain keychain;
  MacUrlSession urlSession;
  MacAudioHardware audioHardware;
  MacKeyboardLayout keyboardLayout;
  MacHotKeys hotKeys;
  MacEventPoster eventPoster;
  MacEventMonitors eventMonitors;
  MacEventTaps eventTaps;
  MacAccessibility accessibility;
  MacHostStatistics hostStatistics;
  MacTemperatureSensors temperatureSensors;
  MacScreens screens;
  MacDisplays displays;
  MacPreviewPanel previewPanel;
  MacAlerts alerts;
  MacStatusBar statusBar;
  MacTextMetrics textMetrics;
  MacFlutterEngines flutterEngines;
  MacSoftwareUpdate softwareUpdate;
};

MacPlatform::MacPlatform() : services_(std::make_unique<Services>()) {}

MacPlatform::~MacPlatform() = default;

Accessibility& MacPlatform::accessibility() {
  return services_->accessibility;
}

Alerts& MacPlatform::alerts() {
  return services_->alerts;
}

Application& MacPlatform::application() {
  return services_->application;
}

AudioHardware& MacPlatform::audioHardware() {
  return services_->audioHardware;
}

Directories& MacPlatform::directories() {
  return services_->directories;
}

Dispatch& MacPlatform::dispatch() {
  return services_->dispatch;
}

Displays& MacPlatform::displays() {
  return services_->displays;
}

EventMonitors& MacPlatform::eventMonitors() {
  return services_->eventMonitors;
}

EventPoster& MacPlatform::eventPoster() {
  return services_->eventPoster;
}

EventTaps& MacPlatform::eventTaps() {
  return services_->eventTaps;
}

FlutterEngines& MacPlatform::flutterEngines() {
  return services_->flutterEngines;
}

HostStatistics& MacPlatform::hostStatistics() {
  return services_->hostStatistics;
}

HotKeys& MacPlatform::hotKeys() {
  return services_->hotKeys;
}

Images& MacPlatform::images() {
  return services_->images;
}

KeyboardLayout& MacPlatform::keyboardLayout() {
  return services_->keyboardLayout;
}

Keychain& MacPlatform::keychain() {
  return services_->keychain;
}

NotificationCenter& MacPlatform::defaultNotificationCenter() {
  return services_->defaultCenter;
}

NotificationCenter& MacPlatform::workspaceNotificationCenter() {
  return services_->workspaceCenter;
}

Pasteboard& MacPlatform::pasteboard() {
  return services_->pasteboard;
}

PreviewPanel& MacPlatform::previewPanel() {
  return services_->previewPanel;
}

Screens& MacPlatform::screens() {
  return services_->screens;
}

SoftwareUpdate& MacPlatform::softwareUpdate() {
  return services_->softwareUpdate;
}

StatusBar& MacPlatform::statusBar() {
  return services_->statusBar;
}

SystemLog& MacPlatform::systemLog() {
  return services_->systemLog;
}

TemperatureSensors& MacPlatform::temperatureSensors() {
  return services_->temperatureSensors;
}

TextMetrics& MacPlatform::textMetrics() {
  return services_->textMetrics;
}

UrlSession& MacPlatform::urlSession() {
  return services_->urlSession;
}

UserDefaults& MacPlatform::userDefaults() {
  return services_->userDefaults;
}

Workspace& MacPlatform::workspace() {
  return services_->workspace;
}

std::unique_ptr<Platform> makePlatform(int, char**) {
  if (handOverToRunningInstance()) return nullptr;
  @autoreleasepool {
    return std::make_unique<MacPlatform>();
  }
}

}  // namespace zephyx
