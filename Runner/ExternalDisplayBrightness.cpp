#include "Runner/ExternalDisplayBrightness.h"

#include <algorithm>
#include <cmath>

#include "Platform/Dispatch.h"
#include "Platform/Displays.h"
#include "Platform/Platform.h"
#include "Platform/UserDefaults.h"
#include "Runner/SharedObjects.h"

namespace zephyx {
namespace {

constexpr const char* levelKey = "externalBrightness.v1";
constexpr double fullLevel = 1.0;

/// Below this level the backlight goes no lower, and the picture is dimmed instead.
constexpr double leastBacklight = 0.3;
constexpr double darkestScale = 0.15;

// DDC/CI
constexpr std::uint32_t displayAddress = 0x37;
constexpr std::uint32_t sourceAddress = 0x51;
constexpr std::uint8_t setVCPFeature = 0x03;
constexpr std::uint8_t luminance = 0x10;
/// The bytes that every packet has in common: 0x6E (the display's address as it stands on the
/// wire), the source address, length and opcode.
constexpr std::uint8_t commonChecksum = 0xB8;
/// Displays need this much time to carry out a write.
constexpr double secondsBetweenWrites = 0.05;

}  // namespace

ExternalDisplayBrightness& ExternalDisplayBrightness::shared() {
  return SharedObjects::current().get<ExternalDisplayBrightness>();
}

ExternalDisplayBrightness::ExternalDisplayBrightness(Platform& platform)
    : displays_(platform.displays()),
      dispatch_(platform.dispatch()),
      userDefaults_(platform.userDefaults()),
      ddcQueue_(dispatch_.serialQueue("net.quillon.app.ddc", QualityOfService::userInitiated)) {
  rescan();
}

void ExternalDisplayBrightness::rescan() {
  services_ = displays_.externalChannels();
  obstacle_ = displays_.channelObstacle();
}

void ExternalDisplayBrightness::setBrightness(double value) {
  const double level = std::clamp(value, 0.0, fullLevel);
  userDefaults_.setNumber(levelKey, level);
  applyGamma(level < leastBacklight ? level / leastBacklight * (1 - darkestScale) + darkestScale
                                    : 1.0);
  if (services_.empty()) return;

  pendingWrite_.reset();
  const double now = dispatch_.mediaClock();
  const double slot = std::max(now, ddcNextSlot_);
  ddcNextSlot_ = slot + secondsBetweenWrites;
  pendingWrite_ =
      scheduleOnce(ddcQueue_, slot - now,
                   [services = services_, packet = ddcSetVCPPacket(luminance, ddcValue(level))] {
                     for (const auto& service : services) {
                       service->writeI2C(displayAddress, sourceAddress, packet);
                     }
                   });
}

double ExternalDisplayBrightness::last() const {
  return std::clamp(userDefaults_.number(levelKey).value_or(fullLevel), 0.0, fullLevel);
}

void ExternalDisplayBrightness::applyGamma(double scale) {
  for (const auto& display : displays_.onlineDisplays()) {
    if (!display.isBuiltin) displays_.setTransferMaximum(display.id, scale);
  }
}

std::uint16_t ExternalDisplayBrightness::ddcValue(double level) {
  if (level <= leastBacklight) return 0;
  return static_cast<std::uint16_t>(
      std::lround((level - leastBacklight) / (fullLevel - leastBacklight) * 100));
}

ExternalDisplayBrightness::DdcPacket ExternalDisplayBrightness::ddcSetVCPPacket(
    std::uint8_t command, std::uint16_t value) {
  const auto high = static_cast<std::uint8_t>(value >> 8);
  const auto low = static_cast<std::uint8_t>(value & 0xFF);
  constexpr std::uint8_t length = 0x80 | 4;
  return {length, setVCPFeature, command,
          high,   low,           static_cast<std::uint8_t>(command ^ high ^ low ^ commonChecksum)};
}

}  // namespace zephyx
