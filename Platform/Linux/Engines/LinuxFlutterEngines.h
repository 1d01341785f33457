#pragma once

#include <memory>

#include "Platform/FlutterEngine.h"
#include "Platform/Linux/Engines/ScreenProgram.h"

class QQmlEngine;

namespace zephyx {

class DesktopWatch;
class Dispatch;
class Directories;
class Keychain;
class Pasteboard;
class UserDefaults;

/// Makes the engines; their pictures share one QML engine, which sees the desktop's state as the
/// context property `desktop` (`composited`).
class LinuxFlutterEngines final : public FlutterEngines {
 public:
  LinuxFlutterEngines(Dispatch& dispatch, UserDefaults& userDefaults, Directories& directories,
                      Pasteboard& pasteboard, Keychain& keychain, DesktopWatch& watch);
  ~LinuxFlutterEngines() override;

  std::shared_ptr<FlutterEngine> makeEngine(const std::string& name) override;
  std::shared_ptr<FlutterViewController> makeViewController(
      std::shared_ptr<FlutterEngine> engine) override;
  std::shared_ptr<FlutterViewController> makeViewControllerWithDefaultEngine() override;
  void registerPlugins(FlutterViewController& controller) override;

 private:
  ScreenServices screenServices();

  Dispatch& dispatch_;
  UserDefaults& userDefaults_;
  Directories& directories_;
  Pasteboard& pasteboard_;
  Keychain& keychain_;
  std::unique_ptr<QQmlEngine> qml_;
};

}  // namespace zephyx
