#include "Runner/SystemStatsSampler.h"

#include <algorithm>
#include <utility>

#include "Platform/HostStatistics.h"

namespace zephyx {
namespace {

constexpr const char* systemVolume = "/";

double part(double value) {
  return std::clamp(value, 0.0, 1.0);
}

}  // namespace

std::optional<CpuTicks> SystemStatsSampler::readCpuTicks() const {
  const auto ticks = statistics_.processorTicks();
  if (!ticks) return std::nullopt;
  const auto busy = ticks->user + ticks->system + ticks->nice;
  return CpuTicks{busy, busy + ticks->idle};
}

SystemStatsSampler::Snapshot SystemStatsSampler::sample() {
  return {.cpu = cpuUsage(),
          .memory = memoryPressure(),
          .disk = diskUsage(),
          .temperature = SocTemperatureReader::socTemperature(temperatureReader_.readings())};
}

std::optional<double> SystemStatsSampler::cpuUsage() {
  const auto now = readCpuTicks();
  if (!now) return std::nullopt;
  const auto before = std::exchange(previousTicks, now);
  if (!before || now->total <= before->total || now->busy < before->busy) return std::nullopt;
  return part(static_cast<double>(now->busy - before->busy) /
              static_cast<double>(now->total - before->total));
}

double SystemStatsSampler::memoryPressure() const {
  const auto level = statistics_.memoryLevel();
  return level ? part((100 - *level) / 100.0) : memoryUsedFallback();
}

double SystemStatsSampler::memoryUsedFallback() const {
  const auto pages = statistics_.memoryPages();
  const auto memory = static_cast<double>(statistics_.physicalMemory());
  if (!pages || memory == 0) return 0;
  const auto used = static_cast<double>(pages->internal) - static_cast<double>(pages->purgeable) +
                    static_cast<double>(pages->wired) + static_cast<double>(pages->compressor);
  return part(used * static_cast<double>(pages->pageSize) / memory);
}

double SystemStatsSampler::diskUsage() const {
  const auto capacity = statistics_.volumeCapacity(systemVolume);
  if (!capacity || capacity->total == 0) return 0;
  return part(1 - static_cast<double>(capacity->available) / static_cast<double>(capacity->total));
}

}  // namespace zephyx
