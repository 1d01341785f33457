#include "Runner/ClaudeUsageProvider.h"

#include <algorithm>
#include <filesystem>
#include <utility>
#include <vector>

#include "Platform/Directories.h"
#include "Platform/Dispatch.h"
#include "Platform/Platform.h"
#include "Platform/UserDefaults.h"
#include "Runner/AgentRegistry.h"
#include "Runner/SessionLogScan.h"
#include "Runner/UsageServiceUrl.h"

namespace zephyx {
namespace {

constexpr const char* queueLabel = "net.quillon.app.agent-usage";
constexpr const char* sessionLogs = ".claude/projects";  // in the home folder
constexpr const char* hostSetting = "agentUsage.host";
constexpr const AgentRegistry::Agent& claudeCode = AgentRegistry::agents[0];
constexpr std::string_view vendorPrefix = "claude-";
constexpr std::size_t dateStampLength = 8;

bool isDateStamp(std::string_view piece) {
  return piece.size() == dateStampLength &&
         std::all_of(piece.begin(), piece.end(), [](char c) { return c >= '0' && c <= '9'; });
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  for (auto end = text.find(separator); end != std::string_view::npos; end = text.find(separator)) {
    pieces.push_back(text.substr(0, end));
    text.remove_prefix(end + 1);
  }
  pieces.push_back(text);
  return pieces;
}

}  // namespace

ClaudeUsageProvider::ClaudeUsageProvider(Platform& platform)
    : ClaudeUsageProvider(
          platform, [root = std::filesystem::path(platform.directories().home()) / sessionLogs](
                        double since) { return localModelBreakdown(root, since); }) {}

ClaudeUsageProvider::ClaudeUsageProvider(Platform& platform,
                                         ClaudeUsageWork::ModelBreakdown localModelBreakdown)
    : mainQueue_(platform.dispatch().mainQueue()),
      workQueue_(platform.dispatch().serialQueue(queueLabel, QualityOfService::utility)),
      userDefaults_(platform.userDefaults()),
      credentials_(platform.keychain()),
      work_(std::make_shared<ClaudeUsageWork>(platform, workQueue_,
                                              std::move(localModelBreakdown))) {}

std::string_view ClaudeUsageProvider::providerID() const {
  return claudeCode.id;
}

std::string_view ClaudeUsageProvider::displayName() const {
  return claudeCode.name;
}

void ClaudeUsageProvider::fetchUsage(bool interactive, Completion completion) {
  const auto number = ++fetches_;
  completions_.emplace(number, std::move(completion));
  const Completion answer = lifetime_.wrap([this, number](const UsageFetchResult& result) {
    completions_.extract(number).mapped()(result);
  });
  UsageFetch fetch{.url = usageServiceUrl(userDefaults_.string(hostSetting)),
                   .interactive = interactive,
                   .completion = [&mainQueue = mainQueue_, answer](UsageFetchResult result) {
                     mainQueue.async([answer, result = std::move(result)] { answer(result); });
                   }};
  workQueue_.async([work = std::weak_ptr(work_), fetch = std::move(fetch)]() mutable {
    if (const auto alive = work.lock()) alive->fetch(std::move(fetch));
  });
}

void ClaudeUsageProvider::invalidateCredentials() {
  workQueue_.async([work = std::weak_ptr(work_), credentials = credentials_] {
    if (const auto alive = work.lock()) alive->forgetToken();
    credentials.deleteOwnToken();  // also when the program ends now
  });
}

std::string ClaudeUsageProvider::modelDisplayName(std::string_view model) {
  if (model.starts_with(vendorPrefix)) model.remove_prefix(vendorPrefix.size());
  auto pieces = split(model, '-');
  if (pieces.size() > 1 && isDateStamp(pieces.back())) pieces.pop_back();
  std::string name(pieces.front());
  if (!name.empty() && name.front() >= 'a' && name.front() <= 'z') name.front() -= 'a' - 'A';
  for (std::size_t index = 1; index < pieces.size(); ++index) {
    name += index == 1 ? ' ' : '.';
    name += pieces[index];
  }
  return name;
}

}  // namespace zephyx
