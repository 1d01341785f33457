#include "Runner/StatusMenu.h"

#include <cstdint>
#include <nlohmann/json.hpp>
#include <utility>

#include "Platform/SoftwareUpdate.h"
#include "Platform/UserDefaults.h"
#include "Runner/HotkeyManager.h"

namespace zephyx {
namespace {

using nlohmann::json;

constexpr const char* settingsShortcutKey = "flutter.localShortcut.openSettings.v1";
constexpr const char* settingsKeyEquivalent = ",";
constexpr const char* noMicrophone = "No microphone was found.";
constexpr const char* trackpadLockTitle = "Lock Trackpad for Cleaning";

std::shared_ptr<MenuItem> makeRow(const char* title, const char* action,
                                  std::function<void()> perform, const char* keyEquivalent = "",
                                  std::uint64_t mask = eventModifier::command) {
  auto row = std::make_shared<MenuItem>(title, action, std::move(perform));
  row->setKeyEquivalent(keyEquivalent, mask);
  return row;
}

/// In a build without updates it stays in its place and tells why it cannot be chosen.
std::shared_ptr<MenuItem> makeUpdateRow(const SoftwareUpdate& softwareUpdate,
                                        std::function<void()> perform) {
  auto row = makeRow("Check for Updates…", "checkForUpdates", std::move(perform));
  if (const auto reason = softwareUpdate.unavailableReason()) {
    row->update([&](MenuItem::Properties& p) {
      p.isEnabled = false;
      p.toolTip = *reason;
    });
  }
  return row;
}

}  // namespace

StatusMenu::StatusMenu(MenuDelegate& delegate, const HotkeyManager& hotkeys,
                       const UserDefaults& userDefaults, const SoftwareUpdate& softwareUpdate,
                       const ViewRows& viewRows, Actions actions)
    : hotkeys_(hotkeys), userDefaults_(userDefaults), menu_(std::make_shared<Menu>(&delegate)) {
  build(softwareUpdate, viewRows, std::move(actions));
}

void StatusMenu::build(const SoftwareUpdate& softwareUpdate, const ViewRows& viewRows,
                       Actions actions) {
  constexpr auto shiftCommand = eventModifier::shift | eventModifier::command;

  trackpadLockItem_ =
      makeRow(trackpadLockTitle, "toggleTrackpadLock", std::move(actions.toggleTrackpadLock));
  micMuteItem_ = makeRow("Mute Microphone", "toggleMicMute", std::move(actions.toggleMicMute));
  toggleItem_ = makeRow("Open", "togglePopover", std::move(actions.togglePopover), "", 0);
  const auto toggle = hotkeys_.configs().find(HotkeyID::togglePopover);
  if (toggle != hotkeys_.configs().end()) {
    const auto key = hotkeys_.keyEquivalent(toggle->second.keyCode);
    if (!key.empty()) toggleItem_->setKeyEquivalent(key, eventModifiers(toggle->second.modifiers));
  }
  settingsMenuItem_ =
      makeRow("Settings…", "openSettings", std::move(actions.openSettings), settingsKeyEquivalent);

  // From top to bottom.
  addSection({viewRows.systemMonitor, viewRows.agentUsage});
  addSection({viewRows.brightness});
  addSection({viewRows.keyboardLock, trackpadLockItem_});
  addSection({micMuteItem_});
  addSection({toggleItem_});
  addSection(
      {makeRow("Export All Notes", "exportAllNotes", std::move(actions.exportAllNotes), "e",
               shiftCommand),
       makeRow("Import Notes", "importNotes", std::move(actions.importNotes), "i", shiftCommand)});
  addSection({settingsMenuItem_});
  refreshSettingsShortcutHint();
  addSection({makeUpdateRow(softwareUpdate, std::move(actions.checkForUpdates))});
  addSection({makeRow("Quit", "quitApp", std::move(actions.quitApp))});
}

void StatusMenu::addSection(const std::vector<std::shared_ptr<MenuItem>>& rows) {
  if (!menu_->items().empty()) menu_->addItem(MenuItem::separator());
  for (const auto& row : rows) menu_->addItem(row);
}

void StatusMenu::refreshToggleTitle(bool mainWindowVisible) {
  toggleItem_->setTitle(mainWindowVisible ? "Hide" : "Show");
}

void StatusMenu::refreshTrackpadLockItem(bool locked) {
  const auto shortcut = hotkeys_.displayString(hotkeys_.config(HotkeyID::trackpadLock));
  trackpadLockItem_->setTitle(locked ? "Trackpad locked — press " + shortcut + " to unlock"
                                     : trackpadLockTitle);
  mirrorHotkey(HotkeyID::trackpadLock, *trackpadLockItem_);
}

void StatusMenu::refreshMicMuteItem(std::optional<bool> muted) {
  micMuteItem_->update([&](MenuItem::Properties& p) {
    p.isOn = muted.value_or(false);
    p.isEnabled = muted.has_value();
    p.toolTip = muted ? "" : noMicrophone;
  });
  mirrorHotkey(HotkeyID::micMute, *micMuteItem_);
}

void StatusMenu::mirrorHotkey(HotkeyID id, MenuItem& row) const {
  const auto config = hotkeys_.configs().find(id);
  const auto key = config == hotkeys_.configs().end()
                       ? std::string()
                       : hotkeys_.keyEquivalent(config->second.keyCode);
  row.setKeyEquivalent(key, key.empty() ? 0 : eventModifiers(config->second.modifiers));
}

void StatusMenu::refreshSettingsShortcutHint() {
  const auto stored = userDefaults_.string(settingsShortcutKey);
  const auto shortcut =
      stored ? json::parse(*stored, nullptr, false) : json(json::value_t::discarded);
  const auto keyChar = shortcut.is_object() ? shortcut.find("keyChar") : shortcut.end();
  if (keyChar == shortcut.end() || !keyChar->is_string()) {
    settingsMenuItem_->setKeyEquivalent(settingsKeyEquivalent, eventModifier::command);
    return;
  }
  const auto flag = [&](const char* name, std::uint64_t bit) {
    const auto member = shortcut.find(name);
    return member != shortcut.end() && member->is_boolean() && member->get<bool>() ? bit : 0;
  };
  settingsMenuItem_->setKeyEquivalent(
      keyChar->get<std::string>(),
      flag("meta", eventModifier::command) | flag("shift", eventModifier::shift) |
          flag("alt", eventModifier::option) | flag("control", eventModifier::control));
}

}  // namespace zephyx
