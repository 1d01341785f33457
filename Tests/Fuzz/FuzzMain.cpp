#include <cstdio>
#include <cstdlib>

#include "Tests/Fuzz/FuzzTargets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (const char* broken = zephyx::ZEPHYX_FUZZ_TARGET({data, size})) {
    std::fprintf(stderr, "broken: %s\n", broken);
    std::abort();
  }
  return 0;
}
