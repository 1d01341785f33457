#pragma once

#include <cstdint>
#include <string>

namespace zephyx {

/// The tokens that one model used, summed over local logs.
struct ModelUsage {
  std::string model;  ///< identifier, as it stands in the logs
  std::int64_t inputTokens = 0;
  std::int64_t outputTokens = 0;
  std::int64_t cacheReadTokens = 0;
  std::int64_t cacheCreationTokens = 0;
  bool operator==(const ModelUsage&) const = default;
};

}  // namespace zephyx
