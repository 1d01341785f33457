#pragma once

#include <string>

#include "Runner/AgentUsage.h"

namespace zephyx {

/// How a coding agent's usage reads.
namespace agentUsageText {

/// "42%"; utilisations are shown in whole percent.
std::string percent(double utilization);
/// "Session 42% · resets 17:05".
std::string session(const AgentUsage& usage);
/// "Week 30% · resets Fri 17:05"; empty when the service said nothing about the week.
std::string week(const AgentUsage& usage);
/// "Opus: 12% used this week".
std::string scopedWeek(const ScopedWeeklyLimit& limit);
/// "12.3K in · 950 out"; what came from caches and went into them was read, too.
std::string tokens(const ModelUsage& model);

}  // namespace agentUsageText

}  // namespace zephyx
