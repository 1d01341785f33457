#pragma once

#include <nlohmann/json.hpp>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// What UTF-8 text says; a discarded value, which is of no kind, when it is not one JSON value.
inline nlohmann::json parseJson(BytesView text) {
  // As characters: not every standard library has traits for bytes.
  const auto* begin = reinterpret_cast<const char*>(text.data());
  return nlohmann::json::parse(begin, begin + text.size(), nullptr, false);
}

/// The value that `object` has under a name; null when it has none, or is no object at all.
inline const nlohmann::json& member(const nlohmann::json& object, const char* name) {
  static const nlohmann::json none;
  if (!object.is_object()) return none;
  const auto found = object.find(name);
  return found == object.end() ? none : *found;
}

}  // namespace zephyx
