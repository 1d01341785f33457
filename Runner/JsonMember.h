#pragma once

#include <nlohmann/json.hpp>

namespace zephyx {

/// The value that `object` has under a name; null when it has none, or is no object at all.
inline const nlohmann::json& member(const nlohmann::json& object, const char* name) {
  static const nlohmann::json none;
  if (!object.is_object()) return none;
  const auto found = object.find(name);
  return found == object.end() ? none : *found;
}

}  // namespace zephyx
