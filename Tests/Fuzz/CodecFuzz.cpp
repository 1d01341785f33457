#include <cstdio>
#include <cstdlib>

#include "Tests/Fuzz/CodecProperties.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (const char* broken = zephyx::brokenCodecProperty({data, size})) {
    std::fprintf(stderr, "broken: %s\n", broken);
    std::abort();
  }
  return 0;
}
