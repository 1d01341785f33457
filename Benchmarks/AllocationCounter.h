#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>

namespace zephyx {

/// Counts the calls of operator new, on all threads, from its making to its end, and reports them
/// per iteration as the counter "allocations". Freed memory stays in a process that uses it, so
/// that large values do not measure the kernel's page faults.
class AllocationCounter {
 public:
  explicit AllocationCounter(benchmark::State& state) : state_(state), start_(total()) {}
  ~AllocationCounter() {
    state_.counters["allocations"] = benchmark::Counter(static_cast<double>(total() - start_),
                                                        benchmark::Counter::kAvgIterations);
  }
  AllocationCounter(const AllocationCounter&) = delete;
  AllocationCounter& operator=(const AllocationCounter&) = delete;

  /// The calls so far.
  static std::size_t total();

 private:
  benchmark::State& state_;
  std::size_t start_;
};

}  // namespace zephyx
