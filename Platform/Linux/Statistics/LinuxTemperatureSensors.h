#pragma once

#include <string>
#include <vector>

#include "Platform/Linux/Statistics/KernelFile.h"
#include "Platform/TemperatureSensors.h"

namespace zephyx {

/// The sensors on the processors' dies, as the kernel shows them in a folder of devices. All others
/// (mainboards, disks, graphics) say nothing about the processor and are not reported.
class LinuxTemperatureSensors final : public TemperatureSensors {
 public:
  explicit LinuxTemperatureSensors(std::string devicesFolder = systemFolder());

  /// Looks for sensors when it knows none, or when one of them is gone.
  std::vector<TemperatureReading> readings() override;

  /// The kernel's, or the one that the environment variable ZEPHYX_HWMON names.
  static std::string systemFolder();

 private:
  struct Sensor {
    std::string name;
    KernelFile input;
  };

  void findSensors();
  /// Those of one device.
  void addSensors(const std::string& folder);
  /// False when a sensor did not answer; the others have.
  bool read(std::vector<TemperatureReading>& readings) const;

  const std::string devicesFolder_;
  std::vector<Sensor> sensors_;
};

}  // namespace zephyx
