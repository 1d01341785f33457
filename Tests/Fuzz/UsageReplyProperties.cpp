#include <cmath>

#include "Channel/Utf8.h"
#include "Runner/AgentUsageText.h"
#include "Runner/UsageReply.h"
#include "Tests/Fuzz/FuzzTargets.h"

namespace zephyx {
namespace {

bool isFraction(double value) {
  return value >= 0 && value <= 1;
}

bool isTime(std::optional<double> time) {
  constexpr double year10000 = 253'402'300'800;  // and a day for the zones
  return !time || std::abs(*time) <= year10000 + 86'400;
}

}  // namespace

const char* brokenUsageReplyProperty(BytesView bytes) {
  const auto usage = parseUsageResponse(bytes);
  if (!usage) return nullptr;
  if (!isFraction(usage->sessionUtilization) || !isFraction(usage->weeklyUtilization.value_or(0))) {
    return "a utilisation lies between 0 and 1";
  }
  if (!isTime(usage->sessionResetsAt) || !isTime(usage->weeklyResetsAt)) {
    return "a time lies within the calendar";
  }
  if (agentUsageText::session(*usage).empty()) return "a session has a text";
  if (agentUsageText::week(*usage).empty() == usage->weeklyUtilization.has_value()) {
    return "a week with a figure has a text";
  }
  for (const auto& limit : usage->scopedWeekly) {
    if (!isFraction(limit.utilization) || !isTime(limit.resetsAt)) return "a limit is one";
    const auto text = agentUsageText::scopedWeek(limit);
    if (!isValidUtf8(text) || text.size() > limit.name.size() + 32) return "a limit can be shown";
  }
  return nullptr;
}

}  // namespace zephyx
