#include "Runner/HotkeyManager.h"

#include <string_view>
#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Events.h"
#include "Platform/HotKeys.h"
#include "Platform/Menu.h"
#include "Platform/Platform.h"
#include "Platform/SystemLog.h"
#include "Platform/UserDefaults.h"
#include "Runner/SharedObjects.h"
#include "Runner/Uuid.h"

namespace zephyx {
namespace {

constexpr std::uint32_t shiftCommand = carbonModifier::shift | carbonModifier::command;
constexpr std::uint32_t controlOptionCommand =
    carbonModifier::control | carbonModifier::option | carbonModifier::command;
/// One of these must be in a combination.
constexpr std::uint32_t strongModifiers = controlOptionCommand;

/// ASCII text has the same bytes in MacRoman.
constexpr std::uint32_t fourCharCodeValue(std::string_view text) {
  std::uint32_t value = 0;
  for (const char c : text.substr(0, 4)) value = value * 256 + static_cast<unsigned char>(c);
  return value;
}

}  // namespace

HotkeyManager& HotkeyManager::shared() {
  return SharedObjects::current().get<HotkeyManager>();
}

HotkeyManager::HotkeyManager(Platform& platform)
    : mainQueue_(platform.dispatch().mainQueue()),
      eventMonitors_(platform.eventMonitors()),
      hotKeys_(platform.hotKeys()),
      keyboardLayout_(platform.keyboardLayout()),
      log_(platform.systemLog()),
      standardUserDefaults_(platform.userDefaults()),
      signature_(fourCharCodeValue("ZEPHYX")) {}

HotkeyManager::~HotkeyManager() = default;

const HotkeyTable& HotkeyManager::defaults() {
  static const HotkeyTable table{
      {HotkeyID::togglePopover, {49, shiftCommand}},
      {HotkeyID::clipboardPanel, {9, shiftCommand}},
      {HotkeyID::translate, {17, controlOptionCommand}},
      {HotkeyID::spelling, {31, controlOptionCommand}},
      {HotkeyID::improve, {14, controlOptionCommand}},
      {HotkeyID::restoreLast, {37, controlOptionCommand}},
      {HotkeyID::trackpadLock, {35, controlOptionCommand}},
      {HotkeyID::keyboardLock, {40, controlOptionCommand}},
      {HotkeyID::micMute, {46, controlOptionCommand}},
  };
  return table;
}

const HotkeyTable& HotkeyManager::loadConfigs(const UserDefaults& userDefaults) {
  configs_ = defaults();
  if (const auto stored = userDefaults.data(defaultsKey)) {
    if (const auto table = decodeHotkeyTable(*stored)) {
      for (const auto& [id, config] : *table) configs_[id] = config;
    }
  }
  return configs_;
}

const HotkeyConfig& HotkeyManager::config(HotkeyID id) const {
  const auto current = configs_.find(id);
  return current != configs_.end() ? current->second : defaults().at(id);
}

void HotkeyManager::persist(UserDefaults& userDefaults) const {
  userDefaults.setData(defaultsKey, encodeHotkeyTable(configs_));
}

std::optional<HotkeyError> HotkeyManager::validate(HotkeyID id, const HotkeyConfig& config) const {
  if (!(config.modifiers & strongModifiers)) return HotkeyError::invalid;
  for (const auto& [other, taken] : configs_) {
    if (other != id && taken == config) return HotkeyError::duplicate;
  }
  return std::nullopt;
}

std::int32_t HotkeyManager::registerHotkey(HotkeyID id, const HotkeyConfig& config) {
  const auto logFailure = [&](const char* where, std::int32_t status) {
    log_.log(std::string("[HotkeyManager] registro fallido ") + where + "para id=" +
             std::to_string(rawValue(id)) + " (OSStatus=" + std::to_string(status) + ")");
  };
  if (testRegisterOverride) {
    const auto status = testRegisterOverride(id, config);
    if (status != hotKeyStatus::noErr) logFailure("(test seam) ", status);
    return status;
  }
  refs_.erase(id);  // one that was set while a recording suspended the others
  auto registration =
      hotKeys_.registerHotKey(config.keyCode, config.modifiers, {signature_, rawValue(id)});
  if (registration.status == hotKeyStatus::noErr && registration.handle) {
    refs_[id] = std::move(registration.handle);
  } else {
    logFailure("", registration.status);
  }
  return registration.status;
}

void HotkeyManager::unregister(HotkeyID id) {
  if (testUnregisterOverride) {
    testUnregisterOverride(id);
  } else {
    refs_.erase(id);
  }
}

std::map<HotkeyID, std::int32_t> HotkeyManager::registerAll() {
  if (configs_.empty()) loadConfigs(standardUserDefaults_);
  std::map<HotkeyID, std::int32_t> statuses;
  for (const auto id : allHotkeys) {
    const auto config = configs_.find(id);
    if (config != configs_.end()) statuses[id] = registerHotkey(id, config->second);
  }
  updateToggleMenuItem();
  return statuses;
}

void HotkeyManager::pauseAll() {
  for (const auto id : allHotkeys) unregister(id);
}

std::optional<HotkeyError> HotkeyManager::set(HotkeyID id, const HotkeyConfig& config,
                                              UserDefaults& userDefaults) {
  if (const auto error = validate(id, config)) return error;
  const auto previous = this->config(id);
  unregister(id);
  if (registerHotkey(id, config) != hotKeyStatus::noErr) {
    registerHotkey(id, previous);
    return HotkeyError::registrationFailed;
  }
  configs_[id] = config;
  persist(userDefaults);
  updateToggleMenuItem();
  return std::nullopt;
}

std::optional<HotkeyError> HotkeyManager::reset(HotkeyID id, UserDefaults& userDefaults) {
  return set(id, defaults().at(id), userDefaults);
}

void HotkeyManager::resetAll(UserDefaults& userDefaults) {
  pauseAll();
  configs_ = defaults();
  registerAll();
  userDefaults.removeObject(defaultsKey);
}

void HotkeyManager::startRecording(double timeout,
                                   std::function<void(HotkeyRecordingResult)> onResult) {
  cancelRecording();
  const auto token = makeUuid();
  recording_.emplace(Recording{.token = token, .handler = std::move(onResult)});
  pauseAll();
  recording_->monitor = eventMonitors_.addLocalMonitor(
      eventMask(EventType::keyDown),
      [this, token](const Event& event) { return recordKey(token, event); });
  recording_->keyboard = eventMonitors_.captureKeyboard();
  recording_->timeout = scheduleOnce(mainQueue_, timeout, lifetime_.wrap([this, token] {
    resolveRecording(token, HotkeyRecordingCancelled{});
  }));
}

void HotkeyManager::cancelRecording() {
  if (recording_) resolveRecording(std::string(recording_->token), HotkeyRecordingCancelled{});
}

bool HotkeyManager::recordKey(const std::string& token, const Event& event) {
  if (!recording_ || recording_->token != token) return true;
  const auto modifiers = carbonModifiers(event.modifierFlags);
  if (event.keyCode == keyCode::escape && modifiers == 0) {
    resolveRecording(token, HotkeyRecordingCancelled{});
    return false;
  }
  const HotkeyConfig config{event.keyCode, modifiers};
  resolveRecording(token, HotkeyCaptured{config, displayString(config)});
  return false;
}

void HotkeyManager::resolveRecording(const std::string& token, HotkeyRecordingResult result) {
  if (!recording_ || recording_->token != token) return;
  const auto handler = std::move(recording_->handler);
  recording_.reset();
  registerAll();
  handler(std::move(result));
}

std::string HotkeyManager::displayString(const HotkeyConfig& config) const {
  std::string text;
  if (config.modifiers & carbonModifier::control) text += "⌃";
  if (config.modifiers & carbonModifier::option) text += "⌥";
  if (config.modifiers & carbonModifier::shift) text += "⇧";
  if (config.modifiers & carbonModifier::command) text += "⌘";
  if (config.keyCode == keyCode::escape) return text + "Esc";
  if (config.keyCode == keyCode::space) return text + "Space";
  const auto key = character(config.keyCode);
  return text + (key.empty() ? "?" : key);
}

std::string HotkeyManager::character(std::uint32_t keyCode) const {
  return keyboardLayout_.uppercased(keyboardLayout_.character(keyCode));
}

std::string HotkeyManager::keyEquivalent(std::uint32_t keyCode) const {
  return keyboardLayout_.lowercased(character(keyCode));
}

void HotkeyManager::updateToggleMenuItem() {
  const auto item = toggleMenuItem.lock();
  const auto config = configs_.find(HotkeyID::togglePopover);
  if (!item || config == configs_.end()) return;
  const auto& [key, modifiers] = config->second;
  item->setKeyEquivalent(key == keyCode::space ? " " : keyEquivalent(key),
                         eventModifiers(modifiers));
}

}  // namespace zephyx
