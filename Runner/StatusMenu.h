#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "Platform/Menu.h"

namespace zephyx {

class HotkeyManager;
class UserDefaults;

/// The status menu's rows and their state. Main thread.
class StatusMenu {
 public:
  /// What the rows do.
  struct Actions {
    std::function<void()> togglePopover;
    std::function<void()> exportAllNotes;
    std::function<void()> importNotes;
    std::function<void()> openSettings;
    std::function<void()> quitApp;
  };

  /// `gauges` are the rows of the first section, which show what goes on.
  StatusMenu(MenuDelegate& delegate, const HotkeyManager& hotkeys, const UserDefaults& userDefaults,
             Actions actions, const std::vector<std::shared_ptr<MenuItem>>& gauges = {});

  const std::shared_ptr<Menu>& menu() const { return menu_; }
  const std::shared_ptr<MenuItem>& toggleItem() const { return toggleItem_; }

  /// Retitles the toggle row for what choosing it would do.
  void refreshToggleTitle(bool mainWindowVisible);
  /// Shows the settings screen's own shortcut, which that screen stores.
  void refreshSettingsShortcutHint();

 private:
  void build(Actions actions, const std::vector<std::shared_ptr<MenuItem>>& gauges);
  void addSection(const std::vector<std::shared_ptr<MenuItem>>& rows);

  const HotkeyManager& hotkeys_;
  const UserDefaults& userDefaults_;
  std::shared_ptr<Menu> menu_;
  std::shared_ptr<MenuItem> toggleItem_;
  std::shared_ptr<MenuItem> settingsMenuItem_;
};

}  // namespace zephyx
