#include "Runner/SocTemperatureReader.h"

#include <string_view>

namespace zephyx {
namespace {

// What sensors outside them say is that they are switched off or broken.
constexpr double coldest = 1;
constexpr double hottest = 125;

bool isOnDie(std::string_view name) {
  return name.starts_with("PMU tdie") || name.find("ACC MTR Temp") != std::string_view::npos;
}

}  // namespace

std::optional<double> SocTemperatureReader::socTemperature(
    const std::vector<TemperatureReading>& readings) {
  double sum = 0;
  int count = 0;
  for (const auto& [name, celsius] : readings) {
    if (!isOnDie(name) || celsius <= coldest || celsius >= hottest) continue;
    sum += celsius;
    ++count;
  }
  return count ? std::optional(sum / count) : std::nullopt;
}

}  // namespace zephyx
