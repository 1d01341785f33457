#pragma once

#include <cstdlib>
#include <memory>

namespace zephyx {

/// A reply that the X library allocated, with an owner.
template <typename T>
std::unique_ptr<T, decltype(&std::free)> owned(T* reply) {
  return {reply, &std::free};
}

}  // namespace zephyx
