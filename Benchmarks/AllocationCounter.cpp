#include "Benchmarks/AllocationCounter.h"

#include <atomic>
#include <cstdlib>
#include <new>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

std::atomic<std::size_t> allocations = 0;

#ifdef __GLIBC__
[[maybe_unused]] const bool keepsMemory =
    mallopt(M_TRIM_THRESHOLD, 1 << 30) == 1 && mallopt(M_MMAP_THRESHOLD, 1 << 30) == 1;
#endif

}  // namespace

void* operator new(std::size_t size) {
  // A plain load and store: a locked increment would cost as much as what is measured. Counts of
  // several threads at once are approximate.
  allocations.store(allocations.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
  if (void* memory = std::malloc(size > 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}

void operator delete(void* memory) noexcept {
  std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept {
  std::free(memory);
}

namespace zephyx {

std::size_t AllocationCounter::total() {
  return allocations.load(std::memory_order_relaxed);
}

}  // namespace zephyx
