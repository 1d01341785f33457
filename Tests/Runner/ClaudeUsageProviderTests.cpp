

#include "Runner/ClaudeUsageProvider.h"
#include "Tests/Runner/HostTest.h"
#include "Tests/Simulated/SimulatedDesktop.h"

namespace zephyx {
namespace {

constexpr const char* ownItem = "net.quillon.app.claude-usage-token";
constexpr const char* toolItem = "Claude Code-credentials";
constexpr const char* usageBody = R"({"five_hour": {"utilization": 25}})";

class ClaudeUsageProviderTest : public testing::Test {
 protected:
  ClaudeUsageProviderTest() {
    provider = std::make_unique<ClaudeUsageProvider>(desktop.platform(), [this](double since) {
      desktop.dispatch.forbidMainThread("the scan of the logs");
      scans.push_back(since);
      return std::vector<ModelUsage>{{.model = "m", .inputTokens = 3}};
    });
  }
  void TearDown() override {
    provider.reset();
    desktop.dispatch.advance(20);
    EXPECT_THAT(desktop.faults.all(), IsEmpty());
    EXPECT_THAT(desktop.systemLog.take(), IsEmpty());
  }

  void toolHas(const std::string& token) {
    desktop.keychain.items()[toolItem] =
        bytesOf(R"({"claudeAiOauth": {"accessToken": ")" + token + R"(", "expiresAt": 1}})");
  }
  void ownTokenIs(const std::string& token) { desktop.keychain.items()[ownItem] = bytesOf(token); }
  std::string ownToken() {
    const auto found = desktop.keychain.items().find(ownItem);
    return found == desktop.keychain.items().end()
               ? "none"
               : std::string(found->second.begin(), found->second.end());
  }
  void serverAnswers(int status, const std::string& body = usageBody, double delay = 0) {
    desktop.urlSession.reply({.response = UrlResponse{status, bytesOf(body)}, .delay = delay});
  }
  /// Of the requests since the last call.
  Lines takeTokensSent() {
    Lines tokens;
    const auto& requests = desktop.urlSession.requests();
    for (; requestsSeen_ < requests.size(); ++requestsSeen_) {
      for (const auto& [name, value] : requests[requestsSeen_].headers) {
        if (name == "Authorization") tokens.push_back(value);
      }
    }
    return tokens;
  }

  void start(bool interactive) {
    provider->fetchUsage(interactive, [this](const UsageFetchResult& result) {
      desktop.dispatch.requireMainThread("a completion");
      results.push_back(result);
    });
    EXPECT_THAT(results, IsEmpty());
  }
  /// The only result of a fetch.
  UsageFetchResult fetch(bool interactive) {
    results.clear();
    start(interactive);
    desktop.dispatch.advance(20);
    EXPECT_THAT(results, SizeIs(1));
    return results.at(0);
  }
  UsageFetchResult success() const {
    return AgentUsage{.sessionUtilization = 0.25, .models = {{.model = "m", .inputTokens = 3}}};
  }

  SimulatedDesktop desktop;
  std::vector<double> scans;
  std::vector<UsageFetchResult> results;
  std::unique_ptr<ClaudeUsageProvider> provider;

 private:
  std::size_t requestsSeen_ = 0;
};

const UsageFetchResult reauthorizationRequired = ReauthorizationRequired{};
const UsageFetchResult credentialsUnavailable = CredentialsUnavailable{};
const UsageFetchResult transientFailure = TransientFailure{};

TEST_F(ClaudeUsageProviderTest, ConnectsWithTheToolsTokenAndKeepsIt) {
  EXPECT_EQ(fetch(false), reauthorizationRequired);
  EXPECT_EQ(fetch(true), credentialsUnavailable);
  EXPECT_THAT(desktop.urlSession.requests(), IsEmpty());

  toolHas("tool");
  EXPECT_EQ(fetch(false), reauthorizationRequired);
  serverAnswers(200);
  EXPECT_EQ(fetch(true), success());
  EXPECT_EQ(ownToken(), "tool");
  serverAnswers(200);
  EXPECT_EQ(fetch(false), success());
  // Interactive fetches only looked into the tool's item, and a known token is not read again.
  EXPECT_EQ(desktop.keychain.reads(toolItem), 2);
  EXPECT_EQ(desktop.keychain.reads(ownItem), 4);

  const auto& request = desktop.urlSession.requests().at(0);
  EXPECT_EQ(request.url, "https://api.anthropic.com/api/oauth/usage");
  EXPECT_EQ(request.method, "GET");
  EXPECT_EQ(request.timeout, 8);
  EXPECT_THAT(request.headers, ElementsAre(std::pair("Authorization", "Bearer tool"),
                                           std::pair("anthropic-beta", "oauth-2025-04-20"),
                                           std::pair("Content-Type", "application/json")));
}

TEST_F(ClaudeUsageProviderTest, AMalformedItemOfTheToolIsNoCredential) {
  for (const std::string contents :
       {"", "{", "[]", "\"tool\"", "{}", R"({"claudeAiOauth": "tool"})", R"({"claudeAiOauth": {}})",
        R"({"claudeAiOauth": {"accessToken": 3}})", R"({"accessToken": "tool"})",
        R"([{"claudeAiOauth": {"accessToken": "tool"}}])"}) {
    desktop.keychain.items()[toolItem] = bytesOf(contents);
    EXPECT_EQ(fetch(true), credentialsUnavailable) << contents;
  }
  desktop.keychain.items()[toolItem] = bytesOf(std::string(400'000, '['));
  EXPECT_EQ(fetch(true), credentialsUnavailable);
  desktop.keychain.items()[ownItem] = {0xff, 0xfe};
  EXPECT_EQ(fetch(false), reauthorizationRequired);
  EXPECT_THAT(desktop.urlSession.requests(), IsEmpty());
}

TEST_F(ClaudeUsageProviderTest, ARejectedTokenIsForgottenAndReplacedOnceWhenTheUserAskedForIt) {
  const Lines both = {"Bearer old", "Bearer new"};
  const Lines one = {"Bearer old"};
  const struct {
    const char* name;
    bool interactive, toolHasNewToken;
    std::vector<int> statuses;
    UsageFetchResult result;
    Lines tokensSent;
    const char* ownToken;  ///< afterwards
  } cases[] = {
      {"once", true, true, {401, 200}, success(), both, "new"},
      {"twice", true, true, {401, 401}, credentialsUnavailable, both, "none"},
      {"without another", true, false, {401}, credentialsUnavailable, one, "none"},
      {"in the background", false, true, {401}, reauthorizationRequired, one, "none"},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    provider->invalidateCredentials();
    desktop.dispatch.settle();
    const auto readsBefore = desktop.keychain.reads(toolItem);
    scans.clear();
    desktop.keychain.items().clear();
    ownTokenIs("old");
    if (each.toolHasNewToken) toolHas("new");
    for (const int status : each.statuses) serverAnswers(status);
    EXPECT_EQ(fetch(each.interactive), each.result);
    EXPECT_EQ(takeTokensSent(), each.tokensSent);
    EXPECT_EQ(ownToken(), each.ownToken);
    EXPECT_EQ(desktop.keychain.reads(toolItem) - readsBefore, each.interactive ? 1 : 0);
    EXPECT_THAT(scans, SizeIs(each.result == success() ? 1 : 0));
  }
}

TEST_F(ClaudeUsageProviderTest, OtherStatusesAreNotLookedAt) {
  ownTokenIs("token");
  for (const int status : {500, 429, 302, 403}) {
    serverAnswers(status);
    EXPECT_EQ(fetch(false), success()) << status;
    serverAnswers(status, "busy");
    EXPECT_EQ(fetch(true), transientFailure) << status;
  }
}

TEST_F(ClaudeUsageProviderTest, AFailureThatMayPassKeepsTheToken) {
  ownTokenIs("token");
  EXPECT_EQ(fetch(false), transientFailure);  // no connection
  serverAnswers(200, usageBody, SimulatedReply::never);
  EXPECT_EQ(fetch(false), transientFailure);
  serverAnswers(200, "{");
  EXPECT_EQ(fetch(true), transientFailure);
  serverAnswers(200, std::string(2'000'000, ' ') + usageBody);
  EXPECT_EQ(fetch(false), transientFailure);
  EXPECT_EQ(ownToken(), "token");
  serverAnswers(200, usageBody, 7.9);
  EXPECT_EQ(fetch(false), success());
  EXPECT_EQ(desktop.keychain.reads(ownItem), 1);
}

TEST_F(ClaudeUsageProviderTest, TheModelsAreThoseOfTheSession) {
  ownTokenIs("token");
  serverAnswers(200, R"({"five_hour": {"utilization": 1, "resets_at": "2025-01-01T10:00:00Z"}})");
  fetch(false);
  serverAnswers(200);
  desktop.dispatch.setWallClock(1'800'000'000);
  fetch(false);
  EXPECT_THAT(scans, ElementsAre(1735725600 - 18'000, 1'800'000'000 - 18'000));
}

TEST_F(ClaudeUsageProviderTest, AsksAtTheHostOfTheSettingOrNotAtAll) {
  ownTokenIs("token");
  desktop.userDefaults.setString("agentUsage.host", "http://127.0.0.1:8080");
  serverAnswers(200);
  EXPECT_EQ(fetch(false), success());
  EXPECT_EQ(desktop.urlSession.requests().at(0).url, "http://127.0.0.1:8080/api/oauth/usage");
  desktop.userDefaults.setString("agentUsage.host", "http://example.org");
  EXPECT_EQ(fetch(true), transientFailure);
  EXPECT_THAT(desktop.urlSession.requests(), SizeIs(1));
}

TEST_F(ClaudeUsageProviderTest, DisconnectingForgetsTheTokenEverywhere) {
  toolHas("tool");
  serverAnswers(200);
  fetch(true);
  provider->invalidateCredentials();
  EXPECT_EQ(fetch(false), reauthorizationRequired);
  EXPECT_EQ(ownToken(), "none");
  EXPECT_TRUE(desktop.keychain.items().contains(toolItem));
}

TEST_F(ClaudeUsageProviderTest, DisconnectingDuringARequestIsNotUndoneByItsAnswer) {
  ownTokenIs("old");
  toolHas("tool");
  serverAnswers(401, "", 1);
  start(true);
  desktop.dispatch.advance(0.5);
  provider->invalidateCredentials();
  desktop.dispatch.advance(1);
  EXPECT_THAT(results, ElementsAre(credentialsUnavailable));
  EXPECT_EQ(ownToken(), "none");
  EXPECT_THAT(takeTokensSent(), SizeIs(1));
}

TEST_F(ClaudeUsageProviderTest, AfterItsEndNothingIsAnsweredAndDisconnectingStillHolds) {
  for (const double moment : {0.0, 0.5}) {  // before the work begins, and during the request
    ownTokenIs("token");
    serverAnswers(200, usageBody, 1);
    auto other = std::make_unique<ClaudeUsageProvider>(
        desktop.platform(), [](double) { return std::vector<ModelUsage>{}; });
    other->fetchUsage(true, [this](const UsageFetchResult& result) { results.push_back(result); });
    if (moment > 0) desktop.dispatch.advance(moment);
    other->invalidateCredentials();
    other.reset();
    desktop.dispatch.advance(20);
  }
  EXPECT_THAT(results, IsEmpty());
  EXPECT_THAT(desktop.urlSession.requests(), SizeIs(1));
  EXPECT_EQ(ownToken(), "none");
}

TEST_F(ClaudeUsageProviderTest, EachOfSeveralFetchesIsAnsweredOnce) {
  ownTokenIs("token");
  for (const double delay : {3.0, 1.0, 2.0}) {
    serverAnswers(200, usageBody, delay);
    start(false);
  }
  desktop.dispatch.advance(20);
  EXPECT_THAT(results, ElementsAre(success(), success(), success()));
}

}  // namespace
}  // namespace zephyx
