#pragma once

#include "Platform/HostStatistics.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

/// A machine with four processors whose counters move with the virtual time.
class SimulatedHostStatistics final : public HostStatistics {
 public:
  explicit SimulatedHostStatistics(SimulatedDispatch& dispatch)
      : dispatch_(dispatch), countedUntil_(dispatch.wallClock()) {}

  std::optional<ProcessorTicks> processorTicks() override;
  std::optional<int> memoryLevel() override;
  std::optional<MemoryPages> memoryPages() override;
  std::uint64_t physicalMemory() override;
  std::optional<VolumeCapacity> volumeCapacity(const std::string& folder) override;

  /// How busy the processors are from now on, from 0 to 1.
  void setProcessorLoad(double load);

  bool hasProcessorTicks = true;
  std::optional<int> level = 60;
  std::optional<MemoryPages> pages{{.internal = 500'000,
                                    .purgeable = 20'000,
                                    .wired = 150'000,
                                    .compressor = 40'000,
                                    .pageSize = 16'384}};
  std::uint64_t memory = 17'179'869'184;
  std::optional<VolumeCapacity> volume{{.total = 500'000'000'000, .available = 190'000'000'000}};
  /// How often the host has asked for anything.
  int reads = 0;

 private:
  void count();

  SimulatedDispatch& dispatch_;
  double countedUntil_;
  double load_ = 0;
  double busy_ = 1000;
  double idle_ = 5000;
};

}  // namespace zephyx
