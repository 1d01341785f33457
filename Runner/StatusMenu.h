#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/Menu.h"
#include "Runner/HotkeyId.h"

namespace zephyx {

class HotkeyManager;
class SoftwareUpdate;
class UserDefaults;

/// The status menu's rows and their state. Main thread.
class StatusMenu {
 public:
  /// The rows that show views.
  struct ViewRows {
    std::shared_ptr<MenuItem> systemMonitor;
    std::shared_ptr<MenuItem> agentUsage;
    std::shared_ptr<MenuItem> brightness;
    std::shared_ptr<MenuItem> keyboardLock;
  };

  /// What the other rows do.
  struct Actions {
    std::function<void()> toggleTrackpadLock;
    std::function<void()> toggleMicMute;
    std::function<void()> togglePopover;
    std::function<void()> exportAllNotes;
    std::function<void()> importNotes;
    std::function<void()> openSettings;
    std::function<void()> checkForUpdates;
    std::function<void()> quitApp;
  };

  StatusMenu(MenuDelegate& delegate, const HotkeyManager& hotkeys, const UserDefaults& userDefaults,
             const SoftwareUpdate& softwareUpdate, const ViewRows& viewRows, Actions actions);

  const std::shared_ptr<Menu>& menu() const { return menu_; }
  const std::shared_ptr<MenuItem>& toggleItem() const { return toggleItem_; }

  /// Retitles the toggle row for what choosing it would do.
  void refreshToggleTitle(bool mainWindowVisible);
  /// Shows the settings screen's own shortcut, which that screen stores.
  void refreshSettingsShortcutHint();
  void refreshTrackpadLockItem(bool locked);
  /// `muted` is nothing when there is no microphone.
  void refreshMicMuteItem(std::optional<bool> muted);

 private:
  void build(const SoftwareUpdate& softwareUpdate, const ViewRows& viewRows, Actions actions);
  /// Shows a hotkey's combination on a row.
  void mirrorHotkey(HotkeyID id, MenuItem& row) const;
  void addSection(const std::vector<std::shared_ptr<MenuItem>>& rows);

  const HotkeyManager& hotkeys_;
  const UserDefaults& userDefaults_;
  std::shared_ptr<Menu> menu_;
  std::shared_ptr<MenuItem> trackpadLockItem_;
  std::shared_ptr<MenuItem> micMuteItem_;
  std::shared_ptr<MenuItem> toggleItem_;
  std::shared_ptr<MenuItem> settingsMenuItem_;
};

}  // namespace zephyx
