#pragma once

#include <memory>

#include "Platform/Platform.h"

namespace zephyx {

/// The services on macOS.
class MacPlatform final : public Platform {
 public:
  MacPlatform();
  ~MacPlatform() override;

  Accessibility& accessibility() override;
  Alerts& alerts() override;
  Application& application() override;
  AudioHardware& audioHardware() override;
  Directories& directories() override;
  Dispatch& dispatch() override;
  Displays& displays() override;
  EventMonitors& eventMonitors() override;
  EventPoster& eventPoster() override;
  EventTaps& eventTaps() override;
  FlutterEngines& flutterEngines() override;
  HostStatistics& hostStatistics() override;
  HotKeys& hotKeys() override;
  Images& images() override;
  KeyboardLayout& keyboardLayout() override;
  Keychain& keychain() override;
  NotificationCenter& defaultNotificationCenter() override;
  NotificationCenter& workspaceNotificationCenter() override;
  Pasteboard& pasteboard() override;
  PreviewPanel& previewPanel() override;
  Screens& screens() override;
  SoftwareUpdate& softwareUpdate() override;
  StatusBar& statusBar() override;
  SystemLog& systemLog() override;
  TemperatureSensors& temperatureSensors() override;
  TextMetrics& textMetrics() override;
  UrlSession& urlSession() override;
  UserDefaults& userDefaults() override;
  Workspace& workspace() override;

 private:
  struct Services;
  std::unique_ptr<Services> services_;
};

}  // namespace zephyx
