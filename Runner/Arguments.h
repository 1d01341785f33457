#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "Channel/Value.h"

namespace zephyx {

// What a call's arguments hold under a key. Null or nothing when they are no map, the key is not
// there, or its value is of another kind.

const std::string* stringArgument(const Value& arguments, std::string_view key);
/// Either width.
std::optional<std::int64_t> integerArgument(const Value& arguments, std::string_view key);
/// A double or an integer.
std::optional<double> numberArgument(const Value& arguments, std::string_view key);
std::optional<bool> boolArgument(const Value& arguments, std::string_view key);
const List* listArgument(const Value& arguments, std::string_view key);

}  // namespace zephyx
