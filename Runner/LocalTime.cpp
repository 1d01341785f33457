#include "Runner/LocalTime.h"

#include <cmath>
#include <cstdio>
#include <ctime>

namespace zephyx {
namespace {

constexpr const char* weekdays[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
constexpr double latest = 253'402'300'799;  // the end of the year 9999

/// Null for a time out of reach.
const std::tm* localTime(double secondsSince1970) {
  if (!(std::abs(secondsSince1970) <= latest)) return nullptr;
  const auto time = static_cast<std::time_t>(std::floor(secondsSince1970));
  return std::localtime(&time);
}

std::string hourAndMinute(const std::tm& time) {
  char text[32];
  std::snprintf(text, sizeof text, "%02d:%02d", time.tm_hour, time.tm_min);
  return text;
}

}  // namespace

std::string hourAndMinute(double secondsSince1970) {
  const auto* time = localTime(secondsSince1970);
  return time ? hourAndMinute(*time) : "";
}

std::string weekdayHourAndMinute(double secondsSince1970) {
  const auto* time = localTime(secondsSince1970);
  return time ? std::string(weekdays[time->tm_wday]) + ' ' + hourAndMinute(*time) : "";
}

}  // namespace zephyx
