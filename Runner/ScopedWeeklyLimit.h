#pragma once

#include <optional>
#include <string>

namespace zephyx {

/// A weekly limit that applies to one model only.
struct ScopedWeeklyLimit {
  std::string name;                ///< the model's display name, as the service gives it
  double utilization = 0;          ///< 0 to 1
  std::optional<double> resetsAt;  ///< seconds since 1970
  bool operator==(const ScopedWeeklyLimit&) const = default;
};

}  // namespace zephyx
