#include "Runner/HotkeyConfig.h"

#include <array>
#include <charconv>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "Platform/HotKeys.h"
#include "Platform/Menu.h"

namespace zephyx {
namespace {

using nlohmann::json;

constexpr std::array<std::pair<std::uint64_t, std::uint32_t>, 4> modifierPairs{{
    {eventModifier::command, carbonModifier::command},
    {eventModifier::shift, carbonModifier::shift},
    {eventModifier::option, carbonModifier::option},
    {eventModifier::control, carbonModifier::control},
}};

std::optional<std::uint32_t> unsigned32(const json& object, const char* key) {
  const auto member = object.find(key);
  if (member == object.end() || !member->is_number_unsigned()) return std::nullopt;
  const auto number = member->get<std::uint64_t>();
  if (number > UINT32_MAX) return std::nullopt;
  return static_cast<std::uint32_t>(number);
}

std::optional<std::int64_t> decimal(const std::string& text) {
  std::int64_t number = 0;
  const auto* end = text.data() + text.size();
  const auto [parsed, error] = std::from_chars(text.data(), end, number);
  if (error != std::errc() || parsed != end) return std::nullopt;
  return number;
}

}  // namespace

Bytes encodeHotkeyTable(const HotkeyTable& table) {
  auto document = json::object();
  for (const auto& [id, config] : table) {
    document[std::to_string(rawValue(id))] = {{"keyCode", config.keyCode},
                                              {"modifiers", config.modifiers}};
  }
  const auto text = document.dump();
  return {text.begin(), text.end()};
}

std::optional<HotkeyTable> decodeHotkeyTable(BytesView bytes) {
  // As characters: not every standard library knows the traits of plain bytes.
  const std::string_view text(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  const auto document = json::parse(text, nullptr, false);
  if (!document.is_object()) return std::nullopt;
  HotkeyTable table;
  for (const auto& [name, value] : document.items()) {
    const auto number = decimal(name);
    if (!number || !value.is_object()) return std::nullopt;
    const auto keyCode = unsigned32(value, "keyCode");
    const auto modifiers = unsigned32(value, "modifiers");
    if (!keyCode || !modifiers) return std::nullopt;
    if (const auto id = hotkeyId(*number)) table[*id] = {*keyCode, *modifiers};
  }
  return table;
}

std::uint32_t carbonModifiers(std::uint64_t flags) {
  std::uint32_t result = 0;
  for (const auto& [event, carbon] : modifierPairs) {
    if (flags & event) result |= carbon;
  }
  return result;
}

std::uint64_t eventModifiers(std::uint32_t flags) {
  std::uint64_t result = 0;
  for (const auto& [event, carbon] : modifierPairs) {
    if (flags & carbon) result |= event;
  }
  return result;
}

}  // namespace zephyx
