#pragma once

#include <QtCore/QPoint>
#include <QtCore/QTimer>
#include <memory>
#include <optional>

#include "Platform/Linux/Menus/LinuxMenu.h"
#include "Platform/Linux/Menus/TrayIcon.h"
#include "Platform/Menu.h"

namespace zephyx {

class DesktopWatch;

/// The tray icon and its menu.
class LinuxStatusItem final : public StatusItem {
 public:
  explicit LinuxStatusItem(DesktopWatch& watch);

  void setImage(const std::string& symbol, const std::string& accessibilityDescription) override;
  void setMenu(std::shared_ptr<Menu> menu) override;
  void cancelTrackingWithoutAnimation() override;
  void performClick() override;

 private:
  void open(QPoint position, LinuxMenu::KeyboardPlace keyboardPlace);
  void openWhenInputIsFree();

  std::shared_ptr<Menu> menu_;
  std::optional<QPoint> position_;  ///< where the menu last opened
  LinuxMenu::KeyboardPlace keyboardPlace_ = LinuxMenu::KeyboardPlace::none;
  int attemptsLeft_ = 0;
  QTimer retry_;
  std::unique_ptr<LinuxMenu> shown_;  ///< made when it is first opened
  TrayIcon tray_;
};

class LinuxStatusBar final : public StatusBar {
 public:
  explicit LinuxStatusBar(DesktopWatch& watch) : watch_(watch) {}
  std::shared_ptr<StatusItem> makeStatusItem(double length) override;

 private:
  DesktopWatch& watch_;
};

}  // namespace zephyx
