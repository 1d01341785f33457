#include "Platform/Linux/Updates/UpdateSchedule.h"

#include <cmath>

#include "Platform/UserDefaults.h"

namespace zephyx {
namespace {

constexpr const char* lastCheckKey = "updates.lastCheck";
constexpr const char* skippedVersionKey = "updates.skippedVersion";

}  // namespace

bool UpdateSchedule::isDue(double now) const {
  const auto last =
      QString::fromStdString(defaults_.string(lastCheckKey).value_or("")).toLongLong();
  const double since = now - static_cast<double>(last);
  return since < 0 || since >= static_cast<double>(interval_.count());
}

void UpdateSchedule::noteCheck(double now) {
  defaults_.setString(lastCheckKey, std::to_string(static_cast<long long>(std::floor(now))));
}

void UpdateSchedule::skip(const QString& version) {
  defaults_.setString(skippedVersionKey, version.toStdString());
}

bool UpdateSchedule::isSkipped(const QString& version) const {
  return defaults_.string(skippedVersionKey) == version.toStdString();
}

}  // namespace zephyx
