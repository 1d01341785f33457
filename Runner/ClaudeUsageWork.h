#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "Platform/UrlSession.h"
#include "Runner/ClaudeCredentials.h"
#include "Runner/UsageFetchResult.h"

namespace zephyx {

class Dispatch;
class DispatchQueue;
class Platform;

/// One fetch on its way.
struct UsageFetch {
  std::optional<std::string> url;  ///< of the service; nothing when the setting names no host
  bool interactive = false;
  std::function<void(UsageFetchResult)> completion;  ///< called once, on the work queue
  bool retriedAfter401 = false;
  std::uint64_t generation = 0;  ///< of the credentials that it began with
};

/// The half of ClaudeUsageProvider that handles tokens. They are here and in the keychain, and
/// nowhere else. All on the work queue but the constructor and the destructor.
class ClaudeUsageWork : public std::enable_shared_from_this<ClaudeUsageWork> {
 public:
  /// The tokens of each model since a time, in seconds since 1970.
  using ModelBreakdown = std::function<std::vector<ModelUsage>(double since)>;

  ClaudeUsageWork(Platform& platform, DispatchQueue& workQueue, ModelBreakdown localModelBreakdown);

  void fetch(UsageFetch fetch);
  /// The user disconnects. What the keychain holds is not touched.
  void forgetToken();

 private:
  /// Makes the coding tool's token ours; false when there is none.
  bool adoptClaudeCodeToken();
  void performUsageRequest(UsageFetch fetch);
  void finish(UsageFetch fetch, const std::optional<UrlResponse>& response);
  void finishRejected(UsageFetch fetch);

  Dispatch& dispatch_;
  DispatchQueue& workQueue_;
  UrlSession& urlSession_;
  const ClaudeCredentials credentials_;
  const ModelBreakdown localModelBreakdown_;
  std::optional<std::string> cachedToken_;
  std::uint64_t generation_ = 0;  ///< grows when the user disconnects
};

}  // namespace zephyx
