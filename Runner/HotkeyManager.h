#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "Platform/LifetimeGuard.h"
#include "Platform/Registration.h"
#include "Runner/HotkeyConfig.h"
#include "Runner/HotkeyError.h"
#include "Runner/HotkeyId.h"
#include "Runner/HotkeyRecordingResult.h"

namespace zephyx {

class DispatchQueue;
class EventMonitors;
class HotKeys;
class KeyboardLayout;
class MenuItem;
class Platform;
class SystemLog;
class UserDefaults;
struct Event;

/// The single owner of the system-wide hotkeys: their combinations, kept in the user defaults, and
/// their registrations with the system. Main thread.
class HotkeyManager {
 public:
  static constexpr const char* defaultsKey = "hotkeys.v1";

  static HotkeyManager& shared();
  explicit HotkeyManager(Platform& platform);
  ~HotkeyManager();

  /// The factory table.
  static const HotkeyTable& defaults();

  /// The current table; empty until it is loaded.
  const HotkeyTable& configs() const { return configs_; }
  /// The current combination, or before the table is loaded the factory's.
  const HotkeyConfig& config(HotkeyID id) const;
  /// Which registrations are ours: the first four bytes of "ZEPHYX".
  std::uint32_t signature() const { return signature_; }

  /// Mirrors the show-app hotkey; see `updateToggleMenuItem`.
  std::weak_ptr<MenuItem> toggleMenuItem;

  /// When set, they stand in for the system's registration and unregistration.
  std::function<std::int32_t(HotkeyID, const HotkeyConfig&)> testRegisterOverride;
  std::function<void(HotkeyID)> testUnregisterOverride;

  /// The factory table with the stored combinations over it.
  const HotkeyTable& loadConfigs(const UserDefaults& userDefaults);
  void persist(UserDefaults& userDefaults) const;

  /// Whether `id` may have the combination; nothing when it may.
  std::optional<HotkeyError> validate(HotkeyID id, const HotkeyConfig& config) const;

  /// Registers every configured hotkey; none may be registered before. Status by id, 0 for success.
  std::map<HotkeyID, std::int32_t> registerAll();
  /// Unregisters every hotkey; the table stays.
  void pauseAll();

  /// Gives `id` another combination and stores it. On an error the previous one is in force.
  std::optional<HotkeyError> set(HotkeyID id, const HotkeyConfig& config,
                                 UserDefaults& userDefaults);
  /// The same with the factory combination.
  std::optional<HotkeyError> reset(HotkeyID id, UserDefaults& userDefaults);
  /// The factory table for all; the stored one is removed.
  void resetAll(UserDefaults& userDefaults);

  /// Suspends all hotkeys and takes the next key that is pressed, from every program, for at most
  /// `timeout` seconds. `onResult` runs once, when all hotkeys are back, or when a newer recording
  /// is about to begin.
  void startRecording(double timeout, std::function<void(HotkeyRecordingResult)> onResult);
  /// Ends a recording, if there is one, as cancelled.
  void cancelRecording();

  /// Modifier glyphs and the key's glyph in the current layout, such as "⌃⌥⌘T".
  std::string displayString(const HotkeyConfig& config) const;
  /// What the key prints unshifted in the current layout, upper case; empty for nothing.
  std::string character(std::uint32_t keyCode) const;
  /// The same, lower case, as menus want it.
  std::string keyEquivalent(std::uint32_t keyCode) const;
  /// Shows the show-app hotkey on `toggleMenuItem`.
  void updateToggleMenuItem();

 private:
  std::int32_t registerHotkey(HotkeyID id, const HotkeyConfig& config);
  void unregister(HotkeyID id);
  /// True when the key goes on to whom it was meant for.
  bool recordKey(const std::string& token, const Event& event);
  void resolveRecording(const std::string& token, HotkeyRecordingResult result);

  struct Recording {
    std::string token;  ///< tells a late time-out or key from those of the recording under way
    std::function<void(HotkeyRecordingResult)> handler;
    Registration monitor;
    Registration keyboard;
    Registration timeout;
  };

  DispatchQueue& mainQueue_;
  EventMonitors& eventMonitors_;
  HotKeys& hotKeys_;
  KeyboardLayout& keyboardLayout_;
  SystemLog& log_;
  UserDefaults& standardUserDefaults_;
  const std::uint32_t signature_;
  HotkeyTable configs_;
  std::map<HotkeyID, Registration> refs_;
  std::optional<Recording> recording_;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
