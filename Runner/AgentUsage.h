#pragma once

#include <optional>
#include <vector>

#include "Runner/ModelUsage.h"
#include "Runner/ScopedWeeklyLimit.h"

namespace zephyx {

/// One snapshot of what the user consumed with a coding agent. Utilisations are fractions from 0 to
/// 1, times are seconds since 1970; what the service did not say is absent.
struct AgentUsage {
  double sessionUtilization = 0;
  std::optional<double> sessionResetsAt;
  std::optional<double> weeklyUtilization;
  std::optional<double> weeklyResetsAt;
  std::vector<ScopedWeeklyLimit> scopedWeekly;  ///< in the service's order
  std::vector<ModelUsage> models;               ///< the largest total first
  bool operator==(const AgentUsage&) const = default;
};

}  // namespace zephyx
