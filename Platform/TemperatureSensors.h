#pragma once

#include <string>
#include <vector>

namespace zephyx {

/// What one sensor says.
struct TemperatureReading {
  std::string name;  ///< that of the sensor's product; "PMU tdie" leads it on a processor's die
  double celsius = 0;
};

/// The machine's temperature sensors. Main thread.
class TemperatureSensors {
 public:
  virtual ~TemperatureSensors() = default;

  /// As they are, plausible or not; a sensor that does not answer is left out. Empty on a machine
  /// without sensors.
  virtual std::vector<TemperatureReading> readings() = 0;
};

}  // namespace zephyx
