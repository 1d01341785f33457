#include "Platform/Linux/Clipboard/FreedMemory.h"

#include <malloc.h>

#include <chrono>

namespace zephyx {
namespace {

constexpr std::chrono::seconds quietTime(2);
constexpr int largestKeptBlock = 32 << 20;  // the most that the allocator takes
constexpr int mostKeptAtTheEnd = 64 << 20;

}  // namespace

void FreedMemory::keep() {
  // What one thread has freed is there for the next one only when they share one arena.
  mallopt(M_ARENA_MAX, 1);
  mallopt(M_MMAP_THRESHOLD, largestKeptBlock);
  mallopt(M_TRIM_THRESHOLD, mostKeptAtTheEnd);
}

FreedMemory::FreedMemory() {
  timer_.setSingleShot(true);
  timer_.setInterval(quietTime);
  QObject::connect(&timer_, &QTimer::timeout, [] { malloc_trim(0); });
}

}  // namespace zephyx
