#include <gtest/gtest.h>

#include <cstdlib>
#include <ctime>
#include <limits>

#include "Runner/AgentUsageText.h"
#include "Tests/Runner/FakeUsageProvider.h"

namespace zephyx {
namespace {

/// Where clocks are two and a half hours ahead.
class AgentUsageTextTest : public testing::Test {
 protected:
  AgentUsageTextTest() {
    setenv("TZ", "ZONE-02:30", 1);
    tzset();
  }
  ~AgentUsageTextTest() override { unsetenv("TZ"); }
};

TEST_F(AgentUsageTextTest, LinesNameThePercentAndTheTimeWhereTheUserIs) {
  auto usage = usageWith(1, 0);
  EXPECT_EQ(agentUsageText::session(usage), "Session 42% · resets 19:35");
  EXPECT_EQ(agentUsageText::week(usage), "Week 31% · resets Fri 12:30");
  EXPECT_EQ(agentUsageText::scopedWeek(usage.scopedWeekly[0]), "Opus: 13% used this week");
  usage.sessionResetsAt = -1;
  usage.weeklyResetsAt = 1'736'029'800;  // Saturday there already
  EXPECT_EQ(agentUsageText::session(usage), "Session 42% · resets 02:29");
  EXPECT_EQ(agentUsageText::week(usage), "Week 31% · resets Sun 01:00");
  usage.sessionResetsAt.reset();
  usage.weeklyResetsAt = 1e300;
  EXPECT_EQ(agentUsageText::session(usage), "Session 42%");
  EXPECT_EQ(agentUsageText::week(usage), "Week 31%");
  usage.weeklyUtilization.reset();
  EXPECT_EQ(agentUsageText::week(usage), "");
}

TEST_F(AgentUsageTextTest, TokensAreCountedInThousandsAndMillions) {
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
  const std::pair<ModelUsage, const char*> cases[] = {
      {{"", 0, 0, 0, 0}, "0 in · 0 out"},
      {{"", 999, 1000, 0, 0}, "999 in · 1.0K out"},
      {{"", 400, 2'500'000, 300, 300}, "1.0K in · 2.5M out"},
      {{"", 1'050, 999'999, 0, 0}, "1.1K in · 1000.0K out"},
      {{"", most, 1'000'000, most, most}, "27670116110564.3M in · 1.0M out"},
  };
  for (const auto& [model, text] : cases) EXPECT_EQ(agentUsageText::tokens(model), text);
}

}  // namespace
}  // namespace zephyx
