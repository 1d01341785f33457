#pragma once

#include "Platform/Platform.h"
#include "Tests/Simulated/SimulatedDesktop.h"

namespace zephyx {

/// The services of a simulated desktop, as the host sees them.
class SimulatedPlatform : public Platform {
 public:
  explicit SimulatedPlatform(SimulatedDesktop& desktop) : desktop_(desktop) {}

  Accessibility& accessibility() override { return desktop_.accessibility; }
  Alerts& alerts() override { return desktop_.alerts; }
  Application& application() override { return desktop_.application; }
  AudioHardware& audioHardware() override { return desktop_.audioHardware; }
  Directories& directories() override { return desktop_.directories; }
  Dispatch& dispatch() override { return desktop_.dispatch; }
  Displays& displays() override { return desktop_.displays; }
  EventMonitors& eventMonitors() override { return desktop_.eventMonitors; }
  EventPoster& eventPoster() override { return desktop_.keyboard; }
  EventTaps& eventTaps() override { return desktop_.eventTaps; }
  FlutterEngines& flutterEngines() override { return desktop_.engines; }
  HostStatistics& hostStatistics() override { return desktop_.hostStatistics; }
  HotKeys& hotKeys() override { return desktop_.hotKeys; }
  Images& images() override { return desktop_.images; }
  KeyboardLayout& keyboardLayout() override { return desktop_.keyboardLayout; }
  NotificationCenter& defaultNotificationCenter() override { return desktop_.defaultCenter; }
  NotificationCenter& workspaceNotificationCenter() override { return desktop_.workspaceCenter; }
  Pasteboard& pasteboard() override { return desktop_.pasteboard; }
  PreviewPanel& previewPanel() override { return desktop_.previewPanel; }
  Screens& screens() override { return desktop_.screens; }
  SoftwareUpdate& softwareUpdate() override { return desktop_.softwareUpdate; }
  StatusBar& statusBar() override { return desktop_.statusBar; }
  SystemLog& systemLog() override { return desktop_.systemLog; }
  TemperatureSensors& temperatureSensors() override { return desktop_.temperatureSensors; }
  TextMetrics& textMetrics() override { return desktop_.textMetrics; }
  UrlSession& urlSession() override { return desktop_.urlSession; }
  UserDefaults& userDefaults() override { return desktop_.userDefaults; }
  Keychain& keychain() override { return desktop_.keychain; }
  Workspace& workspace() override { return desktop_.workspace; }

 private:
  SimulatedDesktop& desktop_;
};

}  // namespace zephyx
