#pragma once

#include <string>

#include "Platform/HostStatistics.h"
#include "Platform/Linux/FileDescriptor.h"
#include "Platform/Linux/Statistics/KernelFile.h"

namespace zephyx {

/// What the kernel counts, from files of `processFolder` that stay open.
class LinuxHostStatistics final : public HostStatistics {
 public:
  explicit LinuxHostStatistics(const std::string& processFolder = "/proc");

  std::optional<ProcessorTicks> processorTicks() override;
  std::optional<int> memoryLevel() override;
  std::optional<MemoryPages> memoryPages() override;
  std::uint64_t physicalMemory() override;
  std::optional<VolumeCapacity> volumeCapacity(const std::string& folder) override;

 private:
  KernelFile processors_;
  KernelFile memory_;
  std::string folderName_;
  FileDescriptor folder_;  ///< that of the last volume; asking it so is faster than by name
};

}  // namespace zephyx
