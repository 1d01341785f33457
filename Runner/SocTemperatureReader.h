#pragma once

#include <optional>
#include <vector>

#include "Platform/TemperatureSensors.h"

namespace zephyx {

/// Reads the machine's sensors for the temperature of its processor. Main thread.
class SocTemperatureReader {
 public:
  explicit SocTemperatureReader(TemperatureSensors& sensors) : sensors_(sensors) {}

  std::vector<TemperatureReading> readings() { return sensors_.readings(); }

  /// The mean of what the sensors on the processor's dies say, in degrees Celsius, without what
  /// cannot be true; nothing when that leaves none.
  static std::optional<double> socTemperature(const std::vector<TemperatureReading>& readings);

 private:
  TemperatureSensors& sensors_;
};

}  // namespace zephyx
