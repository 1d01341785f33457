#include "Tests/Runner/SessionLogReference.h"

#include <algorithm>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <stdexcept>

#include "Runner/InternetDateTime.h"

namespace zephyx {
namespace {

using nlohmann::json;

bool isUtf8(const std::string& text) {
  try {
    return !json(text).dump().empty();
  } catch (const json::exception&) {
    return false;
  }
}

std::int64_t sum(std::int64_t a, std::int64_t b) {
  std::int64_t result = 0;
  if (__builtin_add_overflow(a, b, &result)) throw std::overflow_error("sum of tokens");
  return result;
}

std::int64_t count(const json& usage, const char* name) {
  const auto value = usage.value(name, json());
  if (!value.is_number_integer()) return 0;
  if (value.is_number_unsigned() && value.get<std::uint64_t>() > INT64_MAX) return 0;
  return value.get<std::int64_t>();
}

void addLine(const std::string& line, double since, std::map<std::string, ModelUsage>& models) {
  if (line.find("\"usage\"") == std::string::npos) return;
  const auto entry = json::parse(line, nullptr, false);
  if (!entry.is_object()) return;
  const auto message = entry.value("message", json());
  if (!message.is_object()) return;
  const auto model = message.value("model", json());
  const auto usage = message.value("usage", json());
  const auto timestamp = entry.value("timestamp", json());
  if (!model.is_string() || model == "<synthetic>" || !usage.is_object()) return;
  if (!timestamp.is_string()) return;
  const auto time = parseInternetDateTime(timestamp.get<std::string>());
  if (!time || *time < since) return;
  auto& sums = models[model];
  sums.model = model;
  sums.inputTokens = sum(sums.inputTokens, count(usage, "input_tokens"));
  sums.outputTokens = sum(sums.outputTokens, count(usage, "output_tokens"));
  sums.cacheReadTokens = sum(sums.cacheReadTokens, count(usage, "cache_read_input_tokens"));
  sums.cacheCreationTokens =
      sum(sums.cacheCreationTokens, count(usage, "cache_creation_input_tokens"));
}

}  // namespace

std::vector<ModelUsage> referenceBreakdown(const std::vector<std::string>& logs, double since) {
  std::map<std::string, ModelUsage> models;
  for (const auto& log : logs) {
    if (!isUtf8(log)) continue;
    std::istringstream lines(log);
    for (std::string line; std::getline(lines, line);) addLine(line, since, models);
  }
  std::vector<ModelUsage> sorted;
  for (const auto& [model, usage] : models) sorted.push_back(usage);
  const auto total = [](const ModelUsage& usage) {
    return sum(sum(usage.inputTokens, usage.outputTokens),
               sum(usage.cacheReadTokens, usage.cacheCreationTokens));
  };
  std::ranges::stable_sort(sorted, std::greater(), total);
  return sorted;
}

}  // namespace zephyx
