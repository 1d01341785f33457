#pragma once

#include <cstddef>

namespace zephyx {

/// All that operator new has given out in this process so far.
std::size_t allocatedBytes();

}  // namespace zephyx
