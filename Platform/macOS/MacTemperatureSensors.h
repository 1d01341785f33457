#pragma once

#import <CoreFoundation/CoreFoundation.h>

#include <memory>

#include "Platform/TemperatureSensors.h"

namespace zephyx {

/// The sensors that the system's own thermal management reads, through functions that are in no
/// public header.
class MacTemperatureSensors final : public TemperatureSensors {
 public:
  MacTemperatureSensors();
  ~MacTemperatureSensors() override;

  std::vector<TemperatureReading> readings() override;

 private:
  class Services;
  /// Null until the first reading: finding the sensors asks another process.
  std::unique_ptr<Services> services_;
};

}  // namespace zephyx
