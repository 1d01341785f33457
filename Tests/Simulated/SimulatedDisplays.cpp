#include "Tests/Simulated/SimulatedDisplays.h"

#include <algorithm>
#include <utility>

namespace zephyx {
namespace {
constexpr std::int32_t noSuchDevice = -1;
}

std::int32_t SimulatedDisplayChannel::writeI2C(std::uint32_t chipAddress, std::uint32_t dataAddress,
                                               BytesView bytes) {
  dispatch_.forbidMainThread("DisplayChannel::writeI2C");
  writes_.push_back(
      {dispatch_.mediaClock(), chipAddress, dataAddress, {bytes.begin(), bytes.end()}});
  if (answerTime > 0) dispatch_.waitOnGlobalQueue(answerTime);
  return isConnected ? status : noSuchDevice;
}

std::vector<std::shared_ptr<DisplayChannel>> SimulatedDisplays::externalChannels() {
  dispatch_.requireMainThread("Displays::externalChannels");
  std::vector<std::shared_ptr<DisplayChannel>> channels;
  for (const auto& each : plugged_) {
    if (each.channel) channels.push_back(each.channel);
  }
  return channels;
}

std::vector<Display> SimulatedDisplays::onlineDisplays() {
  dispatch_.requireMainThread("Displays::onlineDisplays");
  std::vector<Display> displays;
  for (const auto& each : plugged_) displays.push_back(each.display);
  return displays;
}

bool SimulatedDisplays::setTransferMaximum(std::uint32_t display, double maximum) {
  dispatch_.requireMainThread("Displays::setTransferMaximum");
  const auto found = std::find_if(plugged_.begin(), plugged_.end(),
                                  [&](const Plugged& each) { return each.display.id == display; });
  if (found == plugged_.end()) return false;
  found->maximum = maximum;
  return true;
}

std::uint32_t SimulatedDisplays::plugIn(Kind kind) {
  plugged_.push_back({{++lastId_, kind == Kind::builtin}, nullptr, std::nullopt});
  if (kind == Kind::external) {
    plugged_.back().channel = std::make_shared<SimulatedDisplayChannel>(dispatch_);
  }
  return lastId_;
}

void SimulatedDisplays::pullOut(std::uint32_t display) {
  if (auto* wire = channel(display)) wire->isConnected = false;
  std::erase_if(plugged_, [&](const Plugged& each) { return each.display.id == display; });
}

SimulatedDisplayChannel* SimulatedDisplays::channel(std::uint32_t display) const {
  const auto* plugged = find(display);
  return plugged ? plugged->channel.get() : nullptr;
}

std::optional<double> SimulatedDisplays::transferMaximum(std::uint32_t display) const {
  const auto* plugged = find(display);
  return plugged ? plugged->maximum : std::nullopt;
}

const SimulatedDisplays::Plugged* SimulatedDisplays::find(std::uint32_t display) const {
  const auto found = std::find_if(plugged_.begin(), plugged_.end(),
                                  [&](const Plugged& each) { return each.display.id == display; });
  return found == plugged_.end() ? nullptr : &*found;
}

}  // namespace zephyx
