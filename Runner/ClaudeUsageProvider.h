#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <string>

#include "Platform/LifetimeGuard.h"
#include "Runner/ClaudeUsageWork.h"
#include "Runner/UsageProvider.h"

namespace zephyx {

class UserDefaults;

/// Claude Code's usage: the service's figures, and the tokens of each model in the tool's logs on
/// this computer. Main thread; what takes time happens on a serial queue.
class ClaudeUsageProvider final : public UsageProvider {
 public:
  explicit ClaudeUsageProvider(Platform& platform);
  /// With other logs; `localModelBreakdown` runs on the serial queue.
  ClaudeUsageProvider(Platform& platform, ClaudeUsageWork::ModelBreakdown localModelBreakdown);

  std::string_view providerID() const override;
  std::string_view displayName() const override;
  void fetchUsage(bool interactive,
                  std::function<void(const UsageFetchResult&)> completion) override;
  void invalidateCredentials() override;

  /// "Opus 4.1" for the identifier claude-opus-4-1-20250805.
  static std::string modelDisplayName(std::string_view model);

 private:
  using Completion = std::function<void(const UsageFetchResult&)>;

  DispatchQueue& mainQueue_;
  DispatchQueue& workQueue_;
  const UserDefaults& userDefaults_;
  const ClaudeCredentials credentials_;  ///< for the work queue
  const std::shared_ptr<ClaudeUsageWork> work_;
  std::map<std::uint64_t, Completion> completions_;  ///< they never leave the main thread
  std::uint64_t fetches_ = 0;
  LifetimeGuard lifetime_;
};

}  // namespace zephyx
