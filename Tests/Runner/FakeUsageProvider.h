#pragma once

#include <utility>

#include "Runner/UsageProvider.h"

namespace zephyx {

/// Keeps each request until a test says what comes of it.
class FakeUsageProvider final : public UsageProvider {
 public:
  struct Request {
    bool interactive;
    std::function<void(const UsageFetchResult&)> completion;
  };

  std::string_view providerID() const override { return "claude-code"; }
  std::string_view displayName() const override { return "Claude Code"; }
  void fetchUsage(bool interactive,
                  std::function<void(const UsageFetchResult&)> completion) override {
    requests.push_back({interactive, std::move(completion)});
  }
  void invalidateCredentials() override { ++invalidations; }

  /// Answers the newest request.
  void answer(const UsageFetchResult& result) { requests.back().completion(result); }

  std::vector<Request> requests;
  int invalidations = 0;
};

/// An agent's usage with so many limits and models.
inline AgentUsage usageWith(std::size_t limits, std::size_t models) {
  constexpr double monday = 1'735'725'600 + 5.0 * 86'400;  // 6 January 2025, 10:00 UTC
  AgentUsage usage{0.42, monday + 25'500, 0.305, monday + 345'600, {}, {}};
  const char* limitNames[] = {"Opus", "Sonnet", "Haiku", "Large context"};
  for (std::size_t i = 0; i < limits; ++i) {
    usage.scopedWeekly.push_back({limitNames[i], 0.125 * static_cast<double>(i + 1), monday});
  }
  const ModelUsage all[] = {{"claude-opus-4-1-20250805", 1'200'000, 350'000, 9'800'000, 640'000},
                            {"claude-sonnet-4-5", 42'000, 12'300, 380'000, 21'000},
                            {"claude-haiku-4-5-20251001", 18'000, 2'100, 0, 0},
                            {"claude-sonnet-4-20250514", 900, 99, 50, 49},
                            {"claude-3-opus", 1, 2, 0, 0}};
  usage.models.assign(all, all + models);
  return usage;
}

}  // namespace zephyx
