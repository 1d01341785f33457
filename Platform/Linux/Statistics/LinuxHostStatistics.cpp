#include "Platform/Linux/Statistics/LinuxHostStatistics.h"

#include <fcntl.h>
#include <sys/statvfs.h>
#include <unistd.h>

#include <algorithm>

namespace zephyx {
namespace {

/// The first line, the sum over all processors, with ten numbers of up to 20 digits.
constexpr std::size_t processorLine = 256;
/// A line for each kind of memory, about fifty of them.
constexpr std::size_t memoryLines = 4096;
/// What is asked each second stands in the first three of them.
constexpr std::size_t firstMemoryLines = 160;

/// The kilobytes in the line that begins with `key`, colon included.
std::optional<std::uint64_t> kilobytes(std::string_view lines, std::string_view key) {
  while (!lines.empty()) {
    const auto end = std::min(lines.find('\n'), lines.size());
    auto line = lines.substr(0, end);
    if (line.starts_with(key)) {
      line.remove_prefix(key.size());
      long long number = 0;
      if (!takeNumber(line, number) || number < 0) return std::nullopt;
      return static_cast<std::uint64_t>(number);
    }
    lines.remove_prefix(std::min(end + 1, lines.size()));
  }
  return std::nullopt;
}

}  // namespace

LinuxHostStatistics::LinuxHostStatistics(const std::string& processFolder)
    : processors_(processFolder + "/stat"), memory_(processFolder + "/meminfo") {}

std::optional<ProcessorTicks> LinuxHostStatistics::processorTicks() {
  char buffer[processorLine];
  auto line = processors_.read(buffer);
  constexpr std::string_view name = "cpu ";
  if (!line.starts_with(name)) return std::nullopt;
  line.remove_prefix(name.size());
  // user nice system idle iowait irq softirq steal. Time of virtual machines, which follows, is in
  // the first two already.
  long long counts[8] = {};
  constexpr int neverMissing = 4;
  for (int i = 0; i < 8; ++i) {
    if (!takeNumber(line, counts[i]) && i < neverMissing) return std::nullopt;
  }
  const auto ticks = [&](int i) { return static_cast<std::uint64_t>(std::max(counts[i], 0LL)); };
  // A processor that waits for a disk has nothing to do. One that another machine took was busy as
  // far as this one can tell.
  return ProcessorTicks{.user = ticks(0),
                        .system = ticks(2) + ticks(5) + ticks(6) + ticks(7),
                        .idle = ticks(3) + ticks(4),
                        .nice = ticks(1)};
}

std::optional<int> LinuxHostStatistics::memoryLevel() {
  char buffer[firstMemoryLines];
  const auto lines = memory_.read(buffer);
  const auto total = kilobytes(lines, "MemTotal:");
  const auto available = kilobytes(lines, "MemAvailable:");
  if (!total || *total == 0 || !available) return std::nullopt;
  return static_cast<int>((std::min(*available, *total) * 100 + *total / 2) / *total);
}

std::optional<MemoryPages> LinuxHostStatistics::memoryPages() {
  char buffer[memoryLines];
  const auto lines = memory_.read(buffer);
  const auto anonymous = kilobytes(lines, "AnonPages:");
  if (!anonymous) return std::nullopt;
  const auto pageSize = static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
  const auto pages = [&](std::string_view key) {
    return kilobytes(lines, key).value_or(0) * 1024 / pageSize;
  };
  // Pages that programs offered to give up are not counted apart from their other ones.
  return MemoryPages{.internal = pages("AnonPages:") + pages("Shmem:"),
                     .wired = pages("SUnreclaim:") + pages("KernelStack:") + pages("PageTables:"),
                     .compressor = pages("Zswap:"),
                     .pageSize = pageSize};
}

std::uint64_t LinuxHostStatistics::physicalMemory() {
  char buffer[firstMemoryLines];
  return kilobytes(memory_.read(buffer), "MemTotal:").value_or(0) * 1024;
}

std::optional<VolumeCapacity> LinuxHostStatistics::volumeCapacity(const std::string& folder) {
  if (folder != folderName_ || !folder_) {
    folderName_ = folder;
    folder_ = FileDescriptor(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  }
  struct statvfs volume {};
  if (!folder_ || fstatvfs(folder_.get(), &volume) != 0) return std::nullopt;
  return VolumeCapacity{.total = volume.f_blocks * volume.f_frsize,
                        .available = volume.f_bavail * volume.f_frsize};
}

}  // namespace zephyx
