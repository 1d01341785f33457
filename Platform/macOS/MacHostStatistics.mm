#import "Platform/macOS/MacHostStatistics.h"

#import <Foundation/Foundation.h>
#import <mach/mach_host.h>
#import <mach/processor_info.h>
#import <mach/vm_map.h>
#import <sys/sysctl.h>

#import "Platform/macOS/Strings.h"

// As <mach/vm_page_size.h> declares it.
extern "C" vm_size_t vm_kernel_page_size;

namespace zephyx {

void releasePort(mach_port_t port) {
  mach_port_deallocate(mach_task_self(), port);
}

MacHostStatistics::MacHostStatistics() : host_(mach_host_self()) {}

std::optional<ProcessorTicks> MacHostStatistics::processorTicks() {
  natural_t processors = 0;
  integer_t* info = nullptr;
  mach_msg_type_number_t count = 0;
  if (host_processor_info(host_.get(), PROCESSOR_CPU_LOAD_INFO, &processors, &info, &count) !=
      KERN_SUCCESS) {
    return std::nullopt;
  }
  ProcessorTicks sum;
  for (natural_t i = 0; i < processors; ++i) {
    const integer_t* states = info + i * CPU_STATE_MAX;
    // Unsigned, though the array says otherwise.
    const auto ticks = [&](int state) { return static_cast<natural_t>(states[state]); };
    sum.user += ticks(CPU_STATE_USER);
    sum.system += ticks(CPU_STATE_SYSTEM);
    sum.idle += ticks(CPU_STATE_IDLE);
    sum.nice += ticks(CPU_STATE_NICE);
  }
  vm_deallocate(mach_task_self(), reinterpret_cast<vm_address_t>(info), count * sizeof(integer_t));
  return sum;
}

std::optional<int> MacHostStatistics::memoryLevel() {
  int level = 0;
  size_t size = sizeof(level);
  if (sysctlbyname("kern.memorystatus_level", &level, &size, nullptr, 0) != 0) return std::nullopt;
  return level;
}

std::optional<MemoryPages> MacHostStatistics::memoryPages() {
  vm_statistics64_data_t statistics{};
  mach_msg_type_number_t count = HOST_VM_INFO64_COUNT;
  if (host_statistics64(host_.get(), HOST_VM_INFO64, reinterpret_cast<integer_t*>(&statistics),
                        &count) != KERN_SUCCESS) {
    return std::nullopt;
  }
  return MemoryPages{.internal = statistics.internal_page_count,
                     .purgeable = statistics.purgeable_count,
                     .wired = statistics.wire_count,
                     .compressor = statistics.compressor_page_count,
                     .pageSize = vm_kernel_page_size};
}

std::uint64_t MacHostStatistics::physicalMemory() {
  return NSProcessInfo.processInfo.physicalMemory;
}

std::optional<VolumeCapacity> MacHostStatistics::volumeCapacity(const std::string& folder) {
  @autoreleasepool {
    // A URL keeps what it was asked once: a new one each time.
    NSURL* url = [NSURL fileURLWithPath:nsString(folder) isDirectory:YES];
    NSDictionary<NSURLResourceKey, id>* values = [url resourceValuesForKeys:@[
      NSURLVolumeTotalCapacityKey, NSURLVolumeAvailableCapacityForImportantUsageKey
    ]
                                                                      error:nil];
    NSNumber* total = values[NSURLVolumeTotalCapacityKey];
    NSNumber* available = values[NSURLVolumeAvailableCapacityForImportantUsageKey];
    if (!total || !available) return std::nullopt;
    return VolumeCapacity{.total = total.unsignedLongLongValue,
                          .available = available.unsignedLongLongValue};
  }
}

}  // namespace zephyx
