#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "Runner/ClaudeUsageProvider.h"
#include "Runner/UsageReply.h"
#include "Runner/UsageServiceUrl.h"

namespace zephyx {
namespace {

std::optional<AgentUsage> parse(const std::string& body) {
  return parseUsageResponse(Bytes(body.begin(), body.end()));
}

TEST(UsageReplyTest, ReadsAllFigures) {
  const auto usage = parse(R"({
    "five_hour": {"utilization": 12.5, "resets_at": "2025-01-01T10:00:00.5Z"},
    "seven_day": {"utilization": 130, "resets_at": "2025-01-08T10:00:00Z"},
    "limits": [
      {"kind": "weekly_scoped", "percent": -4, "scope": {"model": {"display_name": "B"}}},
      {"kind": "weekly_scoped", "percent": 7, "resets_at": "2025-01-01",
       "scope": {"model": {"display_name": "A ñ"}}},
      {"kind": "weekly_scoped", "percent": 100, "resets_at": "2025-01-01T00:00:00+00:00",
       "scope": {"model": {"display_name": ""}}}],
    "other": [1, {"a": null}]})");
  ASSERT_TRUE(usage);
  EXPECT_EQ(*usage, (AgentUsage{.sessionUtilization = 0.125,
                                .sessionResetsAt = 1735725600.5,
                                .weeklyUtilization = 1.0,
                                .weeklyResetsAt = 1736330400,
                                .scopedWeekly = {{"B", 0, std::nullopt},
                                                 {"A ñ", 0.07, std::nullopt},
                                                 {"", 1.0, 1735689600}}}));
}

TEST(UsageReplyTest, WithoutASessionFigureThereIsNothing) {
  for (const std::string body :
       {"", "null", "[]", "3", "{}", "{\"five_hour\": 5}", "{\"five_hour\": {}}",
        "{\"five_hour\": {\"utilization\": \"5\"}}", "{\"five_hour\": {\"utilization\": true}}",
        "{\"five_hour\": {\"utilization\": null}}", "{\"five_hour\": {\"utilization\": NaN}}",
        "{\"five_hour\": {\"utilization\": 5}", "{\"five_hour\": {\"utilization\": 5}} x",
        "{\"five_hour\": {\"utilization\": 1e999}}", "[{\"five_hour\": {\"utilization\": 5}}]",
        "{\"five_hour\": {\"utilization\": 5}, \"x\": \"\xff\"}"}) {
    EXPECT_FALSE(parse(body)) << body;
  }
}

TEST(UsageReplyTest, LeavesOutWhatIsMissingOrMalformed) {
  const auto limit = [](const std::string& members, const std::string& scope) {
    return R"("limits": [{)" + members + R"(, "scope": )" + scope + "}]";
  };
  const std::string scope = R"({"model": {"display_name": "A"}})";
  for (const std::string& rest :
       {std::string(R"("seven_day": {"resets_at": "2025-01-08T10:00:00Z"})"),
        std::string(R"("seven_day": {"utilization": "4", "resets_at": "2025-01-08T10:00:00Z"})"),
        std::string(R"("seven_day": null, "limits": {"kind": "weekly_scoped"})"),
        std::string(R"("limits": [3, null, [], {}, {"kind": "weekly_scoped"}])"),
        limit(R"("kind": "weekly", "percent": 5)", scope),
        limit(R"("kind": 1, "percent": 5)", scope),
        limit(R"("kind": "weekly_scoped", "percent": "5")", scope),
        limit(R"("kind": "weekly_scoped", "percent": true)", scope),
        limit(R"("kind": "weekly_scoped", "percent": 5)", R"("A")"),
        limit(R"("kind": "weekly_scoped", "percent": 5)", R"({"model": {}})")}) {
    const auto usage =
        parse(R"({"five_hour": {"utilization": 50, "resets_at": "soon"}, )" + rest + "}");
    ASSERT_TRUE(usage) << rest;
    EXPECT_EQ(*usage, AgentUsage{.sessionUtilization = 0.5}) << rest;
  }
}

TEST(UsageReplyTest, SurvivesNestingAsDeepAsABodyCanBe) {
  constexpr std::size_t depth = 500'000;
  const std::string nested = std::string(depth, '[') + std::string(depth, ']');
  EXPECT_FALSE(parse(nested));
  EXPECT_FALSE(parse(std::string(depth, '[')));
  EXPECT_TRUE(parse(R"({"five_hour": {"utilization": 1}, "limits": [)" + nested + "]}"));
}

TEST(UsageServiceUrlTest, IsSecureUnlessItStaysOnThisComputer) {
  const std::string path = "/api/oauth/usage";
  EXPECT_EQ(usageServiceUrl({}), "https://api.anthropic.com" + path);
  EXPECT_EQ(usageServiceUrl("example.org:8443"), "https://example.org:8443" + path);
  EXPECT_EQ(usageServiceUrl("127.0.0.1:80"), "https://127.0.0.1:80" + path);
  for (const std::string host :
       {"127.0.0.1", "127.0.0.1:8080", "localhost:1", "[::1]", "[::1]:9"}) {
    EXPECT_EQ(usageServiceUrl("http://" + host), "http://" + host + path);
  }
  for (const std::string refused :
       {"", "http://", "http://example.org", "http://127.0.0.1.example.org", "http://[::1].org",
        "http://localhost@example.org", "http://127.0.0.1/@example.org", "https://example.org",
        "user:word@example.org", "example.org/path", "example.org?x", "example.org#x", "a b",
        "a\r\nb", "ftp://127.0.0.1"}) {
    EXPECT_EQ(usageServiceUrl(refused), std::nullopt) << refused;
  }
}

TEST(ModelDisplayNameTest, IsTheFamilyAndTheVersion) {
  const std::pair<const char*, const char*> names[] = {{"claude-opus-4-1-20250805", "Opus 4.1"},
                                                       {"claude-sonnet-4-20250514", "Sonnet 4"},
                                                       {"claude-haiku-4-5", "Haiku 4.5"},
                                                       {"claude-3-5-sonnet-20241022", "3 5.sonnet"},
                                                       {"opus-4-2025080", "Opus 4.2025080"},
                                                       {"opus-4-2025080x", "Opus 4.2025080x"},
                                                       {"gpt-5-mini", "Gpt 5.mini"},
                                                       {"claude-opus-20250805", "Opus"},
                                                       {"claude-20250805", "20250805"},
                                                       {"claude-", ""},
                                                       {"Claude-x", "Claude x"},
                                                       {"", ""}};
  for (const auto& [model, name] : names) {
    EXPECT_EQ(ClaudeUsageProvider::modelDisplayName(model), name) << model;
  }
}

}  // namespace
}  // namespace zephyx
