#include "Runner/Arguments.h"

namespace zephyx {
namespace {

const Value* argument(const Value& arguments, std::string_view key) {
  const auto* map = arguments.asMap();
  return map ? map->find(key) : nullptr;
}

}  // namespace

const std::string* stringArgument(const Value& arguments, std::string_view key) {
  const auto* value = argument(arguments, key);
  return value ? value->asString() : nullptr;
}

std::optional<std::int64_t> integerArgument(const Value& arguments, std::string_view key) {
  const auto* value = argument(arguments, key);
  return value ? value->asInteger() : std::nullopt;
}

std::optional<double> numberArgument(const Value& arguments, std::string_view key) {
  const auto* value = argument(arguments, key);
  return value ? value->asNumber() : std::nullopt;
}

std::optional<bool> boolArgument(const Value& arguments, std::string_view key) {
  const auto* value = argument(arguments, key);
  return value ? value->asBool() : std::nullopt;
}

const List* listArgument(const Value& arguments, std::string_view key) {
  const auto* value = argument(arguments, key);
  return value ? value->asList() : nullptr;
}

}  // namespace zephyx
