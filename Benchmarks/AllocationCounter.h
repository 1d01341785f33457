#pragma once

#include <benchmark/benchmark.h>

#include <cstddef>

namespace zephyx {

/// Counts the calls of operator new, on all threads, from its making to its end, and reports them
/// per iteration as the counter "allocations".
class AllocationCounter {
 public:
  explicit AllocationCounter(benchmark::State& state);
  ~AllocationCounter();
  AllocationCounter(const AllocationCounter&) = delete;
  AllocationCounter& operator=(const AllocationCounter&) = delete;

 private:
  benchmark::State& state_;
  std::size_t start_;
};

}  // namespace zephyx
