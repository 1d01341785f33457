#pragma once

#include "Platform/TemperatureSensors.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

/// A machine without sensors, until a test puts some in.
class SimulatedTemperatureSensors final : public TemperatureSensors {
 public:
  explicit SimulatedTemperatureSensors(SimulatedDispatch& dispatch) : dispatch_(dispatch) {}

  std::vector<TemperatureReading> readings() override {
    dispatch_.requireMainThread("TemperatureSensors::readings");
    return sensors;
  }

  std::vector<TemperatureReading> sensors;

 private:
  SimulatedDispatch& dispatch_;
};

}  // namespace zephyx
