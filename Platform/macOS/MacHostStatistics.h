#pragma once

#import <mach/mach.h>

#include "Platform/HostStatistics.h"
#import "Platform/macOS/OwnedHandle.h"

namespace zephyx {

/// Gives a right to a port back.
void releasePort(mach_port_t port);

/// What the kernel counts, and what the file system has room for.
class MacHostStatistics final : public HostStatistics {
 public:
  MacHostStatistics();

  std::optional<ProcessorTicks> processorTicks() override;
  std::optional<int> memoryLevel() override;
  std::optional<MemoryPages> memoryPages() override;
  std::uint64_t physicalMemory() override;
  std::optional<VolumeCapacity> volumeCapacity(const std::string& folder) override;

 private:
  OwnedHandle<mach_port_t, releasePort> host_;
};

}  // namespace zephyx
