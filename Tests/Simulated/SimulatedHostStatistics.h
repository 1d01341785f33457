#pragma once

#include "Platform/HostStatistics.h"
#include "Tests/Simulated/SimulatedDispatch.h"

namespace zephyx {

/// A machine with four processors whose counters move with the virtual time.
class SimulatedHostStatistics final : public HostStatistics {
 public:
  explicit SimulatedHostStatistics(SimulatedDispatch& dispatch)
      : dispatch_(dispatch), countedUntil_(dispatch.wallClock()) {}

  std::optional<ProcessorTicks> processorTicks() override {
    dispatch_.requireMainThread("HostStatistics::processorTicks");
    ++reads;
    count();
    if (!hasProcessorTicks) return std::nullopt;
    return ProcessorTicks{.user = whole(busy_ / 2),
                          .system = whole(busy_ / 4),
                          .idle = whole(idle_),
                          .nice = whole(busy_ / 4)};
  }
  std::optional<int> memoryLevel() override {
    dispatch_.requireMainThread("HostStatistics::memoryLevel");
    ++reads;
    return level;
  }
  std::optional<MemoryPages> memoryPages() override {
    ++reads;
    return pages;
  }
  std::uint64_t physicalMemory() override {
    ++reads;
    return memory;
  }
  std::optional<VolumeCapacity> volumeCapacity(const std::string& folder) override {
    dispatch_.requireMainThread("HostStatistics::volumeCapacity");
    ++reads;
    return folder == "/" ? volume : std::nullopt;
  }

  /// How busy the processors are from now on, from 0 to 1.
  void setProcessorLoad(double load) {
    count();
    load_ = load;
  }

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
  static constexpr double ticksPerSecond = 4 * 100;

  static std::uint64_t whole(double ticks) {
    return static_cast<std::uint64_t>(std::llround(ticks));
  }
  void count() {
    const double now = dispatch_.wallClock();
    const double ticks = (now - std::exchange(countedUntil_, now)) * ticksPerSecond;
    busy_ += ticks * load_;
    idle_ += ticks * (1 - load_);
  }

  SimulatedDispatch& dispatch_;
  double countedUntil_;
  double load_ = 0;
  double busy_ = 1000;
  double idle_ = 5000;
};

}  // namespace zephyx
