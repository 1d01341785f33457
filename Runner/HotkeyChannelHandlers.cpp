#include "Runner/HotkeyChannelHandlers.h"

#include <limits>
#include <memory>
#include <optional>
#include <string_view>
#include <utility>

#include "Platform/Platform.h"
#include "Platform/UserDefaults.h"
#include "Runner/Arguments.h"
#include "Runner/HotkeyManager.h"

namespace zephyx {
namespace {

constexpr double recordingTimeout = 6;
constexpr const char* invalidArguments = "invalid";

namespace method {
constexpr std::string_view get = "hotkeysGet";
constexpr std::string_view set = "hotkeySet";
constexpr std::string_view reset = "hotkeyReset";
constexpr std::string_view resetAll = "hotkeysResetAll";
constexpr std::string_view startRecording = "hotkeyStartRecording";
constexpr std::string_view cancelRecording = "hotkeyCancelRecording";
}  // namespace method

std::optional<HotkeyID> idArgument(const Value& arguments) {
  const auto number = integerArgument(arguments, "id");
  return number ? hotkeyId(*number) : std::nullopt;
}

std::optional<std::uint32_t> unsignedArgument(const Value& arguments, const char* key) {
  const auto number = integerArgument(arguments, key);
  if (!number || *number < 0 || *number > std::numeric_limits<std::uint32_t>::max()) {
    return std::nullopt;
  }
  return static_cast<std::uint32_t>(*number);
}

void appendConfig(Map& map, const HotkeyConfig& config, const std::string& display) {
  map.append("keyCode", std::int64_t{config.keyCode});
  map.append("modifiers", std::int64_t{config.modifiers});
  map.append("display", display);
}

/// Null for a hotkey without a combination.
Value configPayload(HotkeyID id) {
  const auto& manager = HotkeyManager::shared();
  const auto found = manager.configs().find(id);
  if (found == manager.configs().end()) return {};
  const auto& config = found->second;
  Map payload{{"id", std::int64_t{rawValue(id)}}};
  appendConfig(payload, config, manager.displayString(config));
  payload.append("isDefault", config == HotkeyManager::defaults().at(id));
  return payload;
}

Value allConfigsPayload() {
  List payloads;
  for (const auto id : allHotkeys) {
    if (auto payload = configPayload(id); !payload.isNull()) payloads.push_back(std::move(payload));
  }
  return payloads;
}

Value recordingPayload(const HotkeyRecordingResult& result) {
  const auto* captured = std::get_if<HotkeyCaptured>(&result);
  if (!captured) return Map{{"cancelled", true}};
  Map payload;
  appendConfig(payload, captured->config, captured->display);
  return payload;
}

void answer(MethodResult result, HotkeyID id, const std::optional<HotkeyError>& error) {
  if (error) {
    result.error(code(*error), message(*error), std::int64_t{rawValue(id)});
  } else {
    result.success(configPayload(id));
  }
}

}  // namespace

bool HotkeyChannelHandlers::handle(const MethodCall& call, MethodResult& result) {
  if (call.method == method::get) {
    result.success(allConfigsPayload());
  } else if (call.method == method::set) {
    set(call.arguments, std::move(result));
  } else if (call.method == method::reset) {
    reset(call.arguments, std::move(result));
  } else if (call.method == method::resetAll) {
    resetAll(std::move(result));
  } else if (call.method == method::startRecording) {
    startRecording(call.arguments, std::move(result));
  } else if (call.method == method::cancelRecording) {
    HotkeyManager::shared().cancelRecording();
    result.success();
  } else {
    return false;
  }
  return true;
}

void HotkeyChannelHandlers::set(const Value& arguments, MethodResult result) {
  const auto id = idArgument(arguments);
  const auto keyCode = unsignedArgument(arguments, "keyCode");
  const auto modifiers = unsignedArgument(arguments, "modifiers");
  if (!id || !keyCode || !modifiers) {
    result.error(invalidArguments, "hotkeySet requiere id/keyCode/modifiers válidos");
    return;
  }
  const auto error =
      HotkeyManager::shared().set(*id, {*keyCode, *modifiers}, platform_.userDefaults());
  answer(std::move(result), *id, error);
}

void HotkeyChannelHandlers::reset(const Value& arguments, MethodResult result) {
  const auto id = idArgument(arguments);
  if (!id) {
    result.error(invalidArguments, "hotkeyReset requiere un id válido");
    return;
  }
  const auto error = HotkeyManager::shared().reset(*id, platform_.userDefaults());
  answer(std::move(result), *id, error);
}

void HotkeyChannelHandlers::resetAll(MethodResult result) {
  HotkeyManager::shared().resetAll(platform_.userDefaults());
  result.success(allConfigsPayload());
}

void HotkeyChannelHandlers::startRecording(const Value& arguments, MethodResult result) {
  if (!idArgument(arguments)) {
    result.error(invalidArguments, "hotkeyStartRecording requiere un id válido");
    return;
  }
  auto pending = std::make_shared<MethodResult>(std::move(result));
  HotkeyManager::shared().startRecording(recordingTimeout,
                                         [pending](const HotkeyRecordingResult& recorded) {
                                           pending->success(recordingPayload(recorded));
                                         });
}

}  // namespace zephyx
