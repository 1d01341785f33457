#include "Platform/Linux/Displays/GammaRamp.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>

namespace zephyx {
namespace {

using Channel = std::vector<std::uint16_t>;

constexpr double fullLevel = 65535;
constexpr Channel GammaRamp::*channels[] = {&GammaRamp::red, &GammaRamp::green, &GammaRamp::blue};
/// Graphics cards keep eight bits of a level at least.
constexpr double deviation = 257;

std::uint16_t level(double value) {
  return static_cast<std::uint16_t>(std::lround(value));
}

double highest(const Channel& channel) {
  const auto found = std::max_element(channel.begin(), channel.end());
  return found == channel.end() ? 0 : *found;
}

double highest(const GammaRamp& ramp) {
  return std::max({highest(ramp.red), highest(ramp.green), highest(ramp.blue)});
}

}  // namespace

GammaRamp GammaRamp::identity(std::size_t size) {
  Channel channel(size);
  for (std::size_t i = 0; i < size; ++i) {
    channel[i] = level(fullLevel * static_cast<double>(i) /
                       static_cast<double>(std::max<std::size_t>(size - 1, 1)));
  }
  return {channel, channel, channel};
}

GammaRamp GammaRamp::dimmed(double maximum) const {
  auto result = *this;
  for (const auto channel : channels) {
    for (auto& each : result.*channel) each = level(each * maximum);
  }
  return result;
}

bool GammaRamp::isDimmed(const GammaRamp& original) const {
  const double top = highest(original);
  if (top == 0 || top - highest(*this) <= deviation) return false;
  const double maximum = highest(*this) / top;
  const auto isNear = [&](std::uint16_t shown, std::uint16_t full) {
    return std::abs(shown - full * maximum) <= deviation;
  };
  return std::all_of(std::begin(channels), std::end(channels), [&](const auto channel) {
    return std::equal((this->*channel).begin(), (this->*channel).end(), (original.*channel).begin(),
                      (original.*channel).end(), isNear);
  });
}

bool GammaRamp::isBlack() const {
  return highest(*this) == 0;
}

}  // namespace zephyx
