#include "Tests/Simulated/SimulatedPlatform.h"

#include "Tests/Simulated/SimulatedDesktop.h"

namespace zephyx {

Accessibility& SimulatedPlatform::accessibility() {
  return desktop_.accessibility;
}
Alerts& SimulatedPlatform::alerts() {
  return desktop_.alerts;
}
Application& SimulatedPlatform::application() {
  return desktop_.application;
}
AudioHardware& SimulatedPlatform::audioHardware() {
  return desktop_.audioHardware;
}
Directories& SimulatedPlatform::directories() {
  return desktop_.directories;
}
Dispatch& SimulatedPlatform::dispatch() {
  return desktop_.dispatch;
}
Displays& SimulatedPlatform::displays() {
  return desktop_.displays;
}
EventMonitors& SimulatedPlatform::eventMonitors() {
  return desktop_.eventMonitors;
}
EventPoster& SimulatedPlatform::eventPoster() {
  return desktop_.keyboard;
}
EventTaps& SimulatedPlatform::eventTaps() {
  return desktop_.eventTaps;
}
FlutterEngines& SimulatedPlatform::flutterEngines() {
  return desktop_.engines;
}
HostStatistics& SimulatedPlatform::hostStatistics() {
  return desktop_.hostStatistics;
}
HotKeys& SimulatedPlatform::hotKeys() {
  return desktop_.hotKeys;
}
Images& SimulatedPlatform::images() {
  return desktop_.images;
}
KeyboardLayout& SimulatedPlatform::keyboardLayout() {
  return desktop_.keyboardLayout;
}
NotificationCenter& SimulatedPlatform::defaultNotificationCenter() {
  return desktop_.defaultCenter;
}
NotificationCenter& SimulatedPlatform::workspaceNotificationCenter() {
  return desktop_.workspaceCenter;
}
Pasteboard& SimulatedPlatform::pasteboard() {
  return desktop_.pasteboard;
}
PreviewPanel& SimulatedPlatform::previewPanel() {
  return desktop_.previewPanel;
}
Screens& SimulatedPlatform::screens() {
  return desktop_.screens;
}
SoftwareUpdate& SimulatedPlatform::softwareUpdate() {
  return desktop_.softwareUpdate;
}
StatusBar& SimulatedPlatform::statusBar() {
  return desktop_.statusBar;
}
SystemLog& SimulatedPlatform::systemLog() {
  return desktop_.systemLog;
}
TemperatureSensors& SimulatedPlatform::temperatureSensors() {
  return desktop_.temperatureSensors;
}
TextMetrics& SimulatedPlatform::textMetrics() {
  return desktop_.textMetrics;
}
UrlSession& SimulatedPlatform::urlSession() {
  return desktop_.urlSession;
}
UserDefaults& SimulatedPlatform::userDefaults() {
  return desktop_.userDefaults;
}

Keychain& SimulatedPlatform::keychain() {
  return desktop_.keychain;
}
Workspace& SimulatedPlatform::workspace() {
  return desktop_.workspace;
}

}  // namespace zephyx
