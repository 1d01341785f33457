#pragma once

#include <functional>
#include <string_view>

#include "Runner/UsageFetchResult.h"

namespace zephyx {

/// Obtains one coding agent's usage. Main thread.
class UsageProvider {
 public:
  virtual ~UsageProvider() = default;

  /// The agent's id in `AgentRegistry`.
  virtual std::string_view providerID() const = 0;
  virtual std::string_view displayName() const = 0;

  /// Returns at once and calls `completion` once, on the main queue, unless the provider has gone
  /// by then. `interactive` after an explicit action of the user's only: the system may then ask
  /// for permission.
  virtual void fetchUsage(bool interactive,
                          std::function<void(const UsageFetchResult&)> completion) = 0;

  /// Forgets the credential, also in the secret store.
  virtual void invalidateCredentials() = 0;
};

}  // namespace zephyx
