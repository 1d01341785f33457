#include "Runner/ModelUsageTotals.h"

#include <algorithm>
#include <cstdint>
#include <functional>

namespace zephyx {
namespace {

std::int64_t sum(std::int64_t a, std::int64_t b) {
  std::int64_t result = 0;
  if (__builtin_add_overflow(a, b, &result)) __builtin_trap();
  return result;
}

std::int64_t total(const ModelUsage& usage) {
  return sum(sum(usage.inputTokens, usage.outputTokens),
             sum(usage.cacheReadTokens, usage.cacheCreationTokens));
}

}  // namespace

void ModelUsageTotals::add(const ModelUsage& usage) {
  auto& entry = models_[usage.model];
  entry.model = usage.model;
  entry.inputTokens = sum(entry.inputTokens, usage.inputTokens);
  entry.outputTokens = sum(entry.outputTokens, usage.outputTokens);
  entry.cacheReadTokens = sum(entry.cacheReadTokens, usage.cacheReadTokens);
  entry.cacheCreationTokens = sum(entry.cacheCreationTokens, usage.cacheCreationTokens);
}

void ModelUsageTotals::add(const ModelUsageTotals& other) {
  for (const auto& [model, usage] : other.models_) add(usage);
}

std::vector<ModelUsage> ModelUsageTotals::sorted() const {
  std::vector<ModelUsage> models;
  for (const auto& [model, usage] : models_) models.push_back(usage);
  std::ranges::stable_sort(models, std::greater(), total);
  return models;
}

}  // namespace zephyx
