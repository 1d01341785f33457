#pragma once

#include <cstdint>
#include <optional>

#include "Runner/SocTemperatureReader.h"

namespace zephyx {

class HostStatistics;

/// What all processors together have done since the system started.
struct CpuTicks {
  std::uint64_t busy = 0;
  std::uint64_t total = 0;
};

/// Takes snapshots of the machine's load. Main thread.
class SystemStatsSampler {
 public:
  /// Parts of a whole, from 0 to 1.
  struct Snapshot {
    std::optional<double> cpu;  ///< since the snapshot before; nothing when that cannot be told
    double memory = 0;
    double disk = 0;
    std::optional<double> temperature;  ///< °C; nothing on a machine without sensors
  };

  SystemStatsSampler(HostStatistics& statistics, TemperatureSensors& sensors)
      : statistics_(statistics), temperatureReader_(sensors) {}

  /// The reading that the next snapshot counts from.
  std::optional<CpuTicks> previousTicks;

  std::optional<CpuTicks> readCpuTicks() const;
  Snapshot sample();

 private:
  std::optional<double> cpuUsage();
  double memoryPressure() const;
  double memoryUsedFallback() const;
  double diskUsage() const;

  HostStatistics& statistics_;
  SocTemperatureReader temperatureReader_;
};

}  // namespace zephyx
