#include "Runner/AgentUsageText.h"

#include <cmath>
#include <locale>
#include <sstream>

#include "Runner/LocalTime.h"

namespace zephyx::agentUsageText {
namespace {

std::string resets(const std::string& time) {
  return time.empty() ? "" : " · resets " + time;
}

std::string fixed(double value, int digits) {
  std::ostringstream text;
  text.imbue(std::locale::classic());
  text.precision(digits);
  text << std::fixed << value;
  return text.str();
}

std::string count(double tokens) {
  if (tokens >= 1e6) return fixed(tokens / 1e6, 1) + "M";
  if (tokens >= 1e3) return fixed(tokens / 1e3, 1) + "K";
  return fixed(tokens, 0);
}

}  // namespace

std::string percent(double utilization) {
  return std::to_string(std::lround(utilization * 100)) + "%";
}

std::string session(const AgentUsage& usage) {
  const auto reset = usage.sessionResetsAt ? hourAndMinute(*usage.sessionResetsAt) : "";
  return "Session " + percent(usage.sessionUtilization) + resets(reset);
}

std::string week(const AgentUsage& usage) {
  if (!usage.weeklyUtilization) return {};
  const auto reset = usage.weeklyResetsAt ? weekdayHourAndMinute(*usage.weeklyResetsAt) : "";
  return "Week " + percent(*usage.weeklyUtilization) + resets(reset);
}

std::string scopedWeek(const ScopedWeeklyLimit& limit) {
  return limit.name + ": " + percent(limit.utilization) + " used this week";
}

std::string tokens(const ModelUsage& model) {
  // The sum of three need not fit into an integer.
  const double input = static_cast<double>(model.inputTokens) +
                       static_cast<double>(model.cacheReadTokens) +
                       static_cast<double>(model.cacheCreationTokens);
  return count(input) + " in · " + count(static_cast<double>(model.outputTokens)) + " out";
}

}  // namespace zephyx::agentUsageText
