#include "Platform/Linux/Displays/LinuxDisplays.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <utility>

#include "Platform/Linux/Displays/DisplayConnectors.h"
#include "Platform/Linux/Displays/I2cChannel.h"

namespace zephyx {

LinuxDisplays::LinuxDisplays(xcb_connection_t* connection, std::string rampFile, DeviceRoots roots)
    : crtcs_(connection), file_(std::move(rampFile)), roots_(std::move(roots)) {
  for (const auto& [display, original] : file_.read()) {
    const auto current = crtcs_.ramp(display);
    // Somebody may have set another ramp since, or the server may be a new one.
    if (current && current->isDimmed(original)) crtcs_.setRamp(display, original);
  }
  keepOriginals();
}

LinuxDisplays::~LinuxDisplays() {
  while (!dimmed_.empty()) restore(dimmed_.begin()->first);
}

std::vector<std::shared_ptr<DisplayChannel>> LinuxDisplays::externalChannels() {
  std::vector<std::shared_ptr<DisplayChannel>> channels;
  for (const int bus : externalDisplayBuses(roots_.sysfs)) {
    auto path = devicePath(bus);
    if (access(path.c_str(), R_OK | W_OK) != 0) continue;
    channels.push_back(std::make_shared<I2cChannel>(std::move(path)));
  }
  return channels;
}

std::optional<std::string> LinuxDisplays::channelObstacle() {
  for (const int bus : externalDisplayBuses(roots_.sysfs)) {
    const auto path = devicePath(bus);
    if (access(path.c_str(), R_OK | W_OK) == 0) continue;
    return errno == ENOENT
               ? "There is no " + path + ": load the kernel module i2c-dev."
               : "You may not write to " + path + ": join the group i2c and log in again.";
  }
  return std::nullopt;
}

std::string LinuxDisplays::devicePath(int bus) const {
  return (roots_.devices / ("i2c-" + std::to_string(bus))).string();
}

std::vector<Display> LinuxDisplays::onlineDisplays() {
  auto displays = crtcs_.inUse();
  // A CRTC keeps its ramp when its display goes, and may light a built-in panel next.
  std::vector<std::uint32_t> strays;
  for (const auto& [display, dimming] : dimmed_) {
    if (std::find(displays.begin(), displays.end(), Display{display, false}) == displays.end()) {
      strays.push_back(display);
    }
  }
  for (const auto stray : strays) restore(stray);
  return displays;
}

bool LinuxDisplays::setTransferMaximum(std::uint32_t display, double maximum) {
  if (maximum >= 1 && dimmed_.contains(display)) {
    restore(display);
    return true;
  }
  auto current = crtcs_.ramp(display);
  if (!current || maximum >= 1) return current.has_value();

  auto& dimming = dimmed_[display];
  // Another program has set a ramp meanwhile: that one is the user's now.
  if (*current != dimming.shown) {
    dimming.original = std::move(*current);
    keepOriginals();
  }
  const bool isSet = crtcs_.setRamp(display, dimming.original.dimmed(maximum));
  dimming.shown = crtcs_.ramp(display).value_or(GammaRamp{});
  return isSet;
}

void LinuxDisplays::restore(std::uint32_t display) {
  const auto dimming = std::move(dimmed_.extract(display).mapped());
  if (crtcs_.ramp(display) == dimming.shown) crtcs_.setRamp(display, dimming.original);
  keepOriginals();
}

void LinuxDisplays::keepOriginals() const {
  RampFile::Ramps originals;
  for (const auto& [display, dimming] : dimmed_) originals[display] = dimming.original;
  file_.write(originals);
}

}  // namespace zephyx
