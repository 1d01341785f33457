#pragma once

#include <memory>

#include "Platform/BinaryMessenger.h"

namespace zephyx {

/// Bytes and what keeps them alive.
struct SharedBytes {
  std::shared_ptr<const void> keeper;
  BytesView bytes;
};

}  // namespace zephyx
