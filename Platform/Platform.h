#pragma once

#include <memory>

namespace zephyx {

class Accessibility;
class Alerts;
class Application;
class AudioHardware;
class Dispatch;
class Directories;
class Displays;
class EventMonitors;
class EventPoster;
class EventTaps;
class FlutterEngines;
class HostStatistics;
class HotKeys;
class Images;
class KeyboardLayout;
class Keychain;
class NotificationCenter;
class Pasteboard;
class PreviewPanel;
class Screens;
class SoftwareUpdate;
class StatusBar;
class SystemLog;
class TemperatureSensors;
class TextMetrics;
class UrlSession;
class UserDefaults;
class Workspace;

/// Hands out the services of one desktop. Each lives as long as the platform. Main thread.
class Platform {
 public:
  virtual ~Platform() = default;

  virtual Accessibility& accessibility() = 0;
  virtual Alerts& alerts() = 0;
  virtual Application& application() = 0;
  virtual AudioHardware& audioHardware() = 0;
  virtual Directories& directories() = 0;
  virtual Dispatch& dispatch() = 0;
  virtual Displays& displays() = 0;
  virtual EventMonitors& eventMonitors() = 0;
  virtual EventPoster& eventPoster() = 0;
  virtual EventTaps& eventTaps() = 0;
  virtual FlutterEngines& flutterEngines() = 0;
  virtual HostStatistics& hostStatistics() = 0;
  virtual HotKeys& hotKeys() = 0;
  virtual Images& images() = 0;
  virtual KeyboardLayout& keyboardLayout() = 0;
  virtual Keychain& keychain() = 0;
  virtual NotificationCenter& defaultNotificationCenter() = 0;
  virtual NotificationCenter& workspaceNotificationCenter() = 0;
  virtual Pasteboard& pasteboard() = 0;
  virtual PreviewPanel& previewPanel() = 0;
  virtual Screens& screens() = 0;
  virtual SoftwareUpdate& softwareUpdate() = 0;
  virtual StatusBar& statusBar() = 0;
  virtual SystemLog& systemLog() = 0;
  virtual TemperatureSensors& temperatureSensors() = 0;
  virtual TextMetrics& textMetrics() = 0;
  virtual UrlSession& urlSession() = 0;
  virtual UserDefaults& userDefaults() = 0;
  virtual Workspace& workspace() = 0;
};

/// Makes the platform that this build is for. Null when this start ends at once: another instance
/// is already running and has been told that the user started the application again, or the system
/// started it for a user who never did.
std::unique_ptr<Platform> makePlatform(int argc, char** argv);

}  // namespace zephyx
