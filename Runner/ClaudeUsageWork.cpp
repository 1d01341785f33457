#include "Runner/ClaudeUsageWork.h"

#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Platform.h"
#include "Runner/UsageReply.h"

namespace zephyx {
namespace {

constexpr double requestTimeout = 8;      // seconds
constexpr double sessionLength = 18'000;  // seconds
constexpr int unauthorized = 401;

UrlRequest usageRequest(const std::string& url, const std::string& token) {
  return {.url = url,
          .headers = {{"Authorization", "Bearer " + token},
                      {"anthropic-beta", "oauth-2025-04-20"},
                      {"Content-Type", "application/json"}},
          .timeout = requestTimeout};
}

}  // namespace

ClaudeUsageWork::ClaudeUsageWork(Platform& platform, DispatchQueue& workQueue,
                                 ModelBreakdown localModelBreakdown)
    : dispatch_(platform.dispatch()),
      workQueue_(workQueue),
      urlSession_(platform.urlSession()),
      credentials_(platform.keychain()),
      localModelBreakdown_(std::move(localModelBreakdown)) {}

void ClaudeUsageWork::fetch(UsageFetch fetch) {
  fetch.generation = generation_;
  if (!cachedToken_) cachedToken_ = credentials_.readOwnToken();
  if (!cachedToken_) {
    if (!fetch.interactive) return fetch.completion(ReauthorizationRequired{});
    if (!adoptClaudeCodeToken()) return fetch.completion(CredentialsUnavailable{});
  }
  performUsageRequest(std::move(fetch));
}

void ClaudeUsageWork::forgetToken() {
  ++generation_;
  cachedToken_.reset();
}

bool ClaudeUsageWork::adoptClaudeCodeToken() {
  auto token = credentials_.readClaudeCodeToken();
  if (!token) return false;
  credentials_.storeOwnToken(*token);
  cachedToken_ = std::move(token);
  return true;
}

void ClaudeUsageWork::performUsageRequest(UsageFetch fetch) {
  if (!fetch.url) return fetch.completion(TransientFailure{});
  auto request = usageRequest(*fetch.url, *cachedToken_);
  urlSession_.start(std::move(request), [weakSelf = weak_from_this(), fetch = std::move(fetch)](
                                            std::optional<UrlResponse> response) {
    const auto self = weakSelf.lock();
    if (!self) return;
    self->workQueue_.async([weakSelf, fetch, response = std::move(response)]() mutable {
      if (const auto alive = weakSelf.lock()) alive->finish(std::move(fetch), response);
    });
  });
}

void ClaudeUsageWork::finish(UsageFetch fetch, const std::optional<UrlResponse>& response) {
  if (response && response->status == unauthorized) return finishRejected(std::move(fetch));
  auto usage = response ? parseUsageResponse(response->body) : std::nullopt;
  if (!usage) return fetch.completion(TransientFailure{});
  const double windowEnd = usage->sessionResetsAt.value_or(dispatch_.wallClock());
  usage->models = localModelBreakdown_(windowEnd - sessionLength);
  fetch.completion(std::move(*usage));
}

void ClaudeUsageWork::finishRejected(UsageFetch fetch) {
  cachedToken_.reset();
  credentials_.deleteOwnToken();
  // Who disconnected meanwhile is not connected again by the answer to an older request.
  const bool mayRetry =
      fetch.interactive && !fetch.retriedAfter401 && fetch.generation == generation_;
  if (mayRetry && adoptClaudeCodeToken()) {
    fetch.retriedAfter401 = true;
    return performUsageRequest(std::move(fetch));
  }
  if (fetch.interactive) return fetch.completion(CredentialsUnavailable{});
  fetch.completion(ReauthorizationRequired{});
}

}  // namespace zephyx
