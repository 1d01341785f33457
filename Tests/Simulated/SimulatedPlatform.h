#pragma once

#include "Platform/Platform.h"

namespace zephyx {

class SimulatedDesktop;

/// The services of a simulated desktop, as the host sees them.
class SimulatedPlatform : public Platform {
 public:
  explicit SimulatedPlatform(SimulatedDesktop& desktop) : desktop_(desktop) {}

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
  Keychain& keychain() override;
  Workspace& workspace() override;

 private:
  SimulatedDesktop& desktop_;
};

}  // namespace zephyx
