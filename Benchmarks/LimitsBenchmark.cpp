#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cstring>
#include <memory>
#include <numeric>
#include <string>
#include <vector>

// What this machine cannot do faster, whatever the program: the other benchmarks of the same run
// are held against it.

namespace zephyx {
namespace {

/// Blocks of a short text's size taken, filled and given back.
void allocations(benchmark::State& state) {
  const auto count = static_cast<std::size_t>(state.range(0));
  std::vector<void*> blocks(count);
  for (auto _ : state) {
    for (auto& block : blocks) {
      block = ::operator new(64);
      std::memset(block, 1, 64);
      benchmark::DoNotOptimize(block);
    }
    for (void* block : blocks) ::operator delete(block);
  }
}
BENCHMARK(allocations)->Arg(2)->Arg(4)->Arg(10)->Arg(10'000);

/// Memory read once, far more than the processor keeps near.
void memoryRead(benchmark::State& state) {
  const std::vector<std::uint64_t> memory(32u << 20, 1);
  for (auto _ : state) {
    auto sum = std::accumulate(memory.begin(), memory.end(), std::uint64_t{0});
    benchmark::DoNotOptimize(sum);
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(memory.size() * 8));
}
BENCHMARK(memoryRead)->Unit(benchmark::kMillisecond);

/// The kernel's own figures of the machine's load, as text; the files stay open.
void readStatistics(benchmark::State& state) {
  const std::array files{::open("/proc/stat", O_RDONLY | O_CLOEXEC),
                         ::open("/proc/meminfo", O_RDONLY | O_CLOEXEC)};
  std::array<char, 16'384> buffer;
  for (auto _ : state) {
    for (const int file : files) {
      if (::pread(file, buffer.data(), buffer.size(), 0) <= 0) state.SkipWithError("unreadable");
    }
  }
  for (const int file : files) ::close(file);
}
BENCHMARK(readStatistics);

/// Arithmetic that waits for nothing but the processor.
void processor(benchmark::State& state) {
  for (auto _ : state) {
    std::uint64_t value = 1;
    for (int round = 0; round < 1'000; ++round) {
      value ^= value << 13;
      value ^= value >> 7;
      value ^= value << 17;
      benchmark::DoNotOptimize(value);
    }
  }
}
BENCHMARK(processor);

}  // namespace
}  // namespace zephyx
