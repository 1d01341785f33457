#include "Tests/Simulated/SimulatedHostStatistics.h"

#include <cmath>
#include <utility>

namespace zephyx {
namespace {

constexpr double ticksPerSecond = 4 * 100;

std::uint64_t whole(double ticks) {
  return static_cast<std::uint64_t>(std::llround(ticks));
}

}  // namespace

void SimulatedHostStatistics::count() {
  const double now = dispatch_.wallClock();
  const double ticks = (now - std::exchange(countedUntil_, now)) * ticksPerSecond;
  busy_ += ticks * load_;
  idle_ += ticks * (1 - load_);
}

void SimulatedHostStatistics::setProcessorLoad(double load) {
  count();
  load_ = load;
}

std::optional<ProcessorTicks> SimulatedHostStatistics::processorTicks() {
  dispatch_.requireMainThread("HostStatistics::processorTicks");
  ++reads;
  count();
  if (!hasProcessorTicks) return std::nullopt;
  return ProcessorTicks{.user = whole(busy_ / 2),
                        .system = whole(busy_ / 4),
                        .idle = whole(idle_),
                        .nice = whole(busy_ / 4)};
}

std::optional<int> SimulatedHostStatistics::memoryLevel() {
  dispatch_.requireMainThread("HostStatistics::memoryLevel");
  ++reads;
  return level;
}

std::optional<MemoryPages> SimulatedHostStatistics::memoryPages() {
  ++reads;
  return pages;
}

std::uint64_t SimulatedHostStatistics::physicalMemory() {
  ++reads;
  return memory;
}

std::optional<VolumeCapacity> SimulatedHostStatistics::volumeCapacity(const std::string& folder) {
  dispatch_.requireMainThread("HostStatistics::volumeCapacity");
  ++reads;
  return folder == "/" ? volume : std::nullopt;
}

}  // namespace zephyx
