#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace zephyx {

/// What the processors did since the system started, in the system's ticks, summed over all of
/// them. A count can fall back when the system's own counters are narrow or a processor goes away.
struct ProcessorTicks {
  std::uint64_t user = 0;
  std::uint64_t system = 0;
  std::uint64_t idle = 0;
  std::uint64_t nice = 0;
};

/// Where the memory's pages are.
struct MemoryPages {
  std::uint64_t internal = 0;    ///< programs' own data
  std::uint64_t purgeable = 0;   ///< of these, what may be thrown away
  std::uint64_t wired = 0;       ///< the system's own, never paged out
  std::uint64_t compressor = 0;  ///< held by compressed memory
  std::uint64_t pageSize = 0;    ///< bytes
};

struct VolumeCapacity {
  std::uint64_t total = 0;      ///< bytes
  std::uint64_t available = 0;  ///< bytes that the user can have, by freeing what the system keeps
                                ///< only as long as there is room
};

/// The load of this machine: each call reads it anew. What the system does not tell is nothing.
/// Main thread.
class HostStatistics {
 public:
  virtual ~HostStatistics() = default;

  virtual std::optional<ProcessorTicks> processorTicks() = 0;
  /// How much of the memory programs can still get, in percent.
  virtual std::optional<int> memoryLevel() = 0;
  virtual std::optional<MemoryPages> memoryPages() = 0;
  /// Bytes; 0 when it is not known.
  virtual std::uint64_t physicalMemory() = 0;
  /// Of the volume that a folder lies on.
  virtual std::optional<VolumeCapacity> volumeCapacity(const std::string& folder) = 0;
};

}  // namespace zephyx
