#pragma once

#include <filesystem>
#include <map>
#include <string>

#include "Platform/Displays.h"
#include "Platform/Linux/Displays/RampFile.h"
#include "Platform/Linux/Displays/RandrCrtcs.h"

namespace zephyx {

/// Where the kernel shows its devices.
struct DeviceRoots {
  std::filesystem::path sysfs = "/sys";
  std::filesystem::path devices = "/dev";
};

/// Displays by the X server's CRTCs, their wires by the kernel's connectors. Dimming multiplies the
/// user's own gamma ramp, which comes back at the end, or at the next start after a crash: ramps
/// outlive the programs that set them.
class LinuxDisplays final : public Displays {
 public:
  /// Borrows the connection, which may be null. `rampFile` lies where it lasts as long as the X
  /// server; the ramps that a killed program has left in it are given back now.
  LinuxDisplays(xcb_connection_t* connection, std::string rampFile, DeviceRoots roots = {});
  ~LinuxDisplays() override;

  std::vector<std::shared_ptr<DisplayChannel>> externalChannels() override;
  std::optional<std::string> channelObstacle() override;
  std::vector<Display> onlineDisplays() override;
  bool setTransferMaximum(std::uint32_t display, double maximum) override;

 private:
  struct Dimming {
    GammaRamp original;
    GammaRamp shown;  ///< as the server has it
  };

  std::string devicePath(int bus) const;
  void restore(std::uint32_t display);
  /// Before a ramp is changed, and after it was given back.
  void keepOriginals() const;

  RandrCrtcs crtcs_;
  RampFile file_;
  const DeviceRoots roots_;
  std::map<std::uint32_t, Dimming> dimmed_;  ///< by display
};

}  // namespace zephyx
