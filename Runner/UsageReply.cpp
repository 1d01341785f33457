#include "Runner/UsageReply.h"

#include <algorithm>
#include <utility>

#include "Runner/InternetDateTime.h"
#include "Runner/Json.h"

namespace zephyx {
namespace {

using nlohmann::json;

std::optional<double> fraction(const json& percent) {
  if (!percent.is_number()) return std::nullopt;
  return std::clamp(percent.get<double>() / 100.0, 0.0, 1.0);
}

std::optional<double> time(const json& text) {
  return text.is_string() ? parseInternetDateTime(text.get_ref<const std::string&>())
                          : std::nullopt;
}

std::optional<ScopedWeeklyLimit> scopedWeeklyLimit(const json& limit) {
  const auto utilization = fraction(member(limit, "percent"));
  const auto& name = member(member(member(limit, "scope"), "model"), "display_name");
  if (member(limit, "kind") != "weekly_scoped" || !utilization || !name.is_string()) {
    return std::nullopt;
  }
  return ScopedWeeklyLimit{name.get<std::string>(), *utilization, time(member(limit, "resets_at"))};
}

}  // namespace

std::optional<AgentUsage> parseUsageResponse(BytesView body) {
  const auto reply = parseJson(body);
  const auto& session = member(reply, "five_hour");
  const auto sessionUtilization = fraction(member(session, "utilization"));
  if (!sessionUtilization) return std::nullopt;

  AgentUsage usage;
  usage.sessionUtilization = *sessionUtilization;
  usage.sessionResetsAt = time(member(session, "resets_at"));
  const auto& week = member(reply, "seven_day");
  usage.weeklyUtilization = fraction(member(week, "utilization"));
  if (usage.weeklyUtilization) usage.weeklyResetsAt = time(member(week, "resets_at"));
  const auto& limits = member(reply, "limits");
  if (limits.is_array()) {
    for (const auto& limit : limits) {
      if (auto scoped = scopedWeeklyLimit(limit)) usage.scopedWeekly.push_back(std::move(*scoped));
    }
  }
  return usage;
}

}  // namespace zephyx
