#pragma once

#include <map>
#include <string>
#include <vector>

#include "Runner/ModelUsage.h"

namespace zephyx {

/// Sums of tokens by model. A sum that leaves 64 bits ends the process.
class ModelUsageTotals {
 public:
  void add(const ModelUsage& usage);
  void add(const ModelUsageTotals& other);

  /// The model with the most tokens, of all four kinds together, first.
  std::vector<ModelUsage> sorted() const;

 private:
  std::map<std::string, ModelUsage> models_;
};

}  // namespace zephyx
