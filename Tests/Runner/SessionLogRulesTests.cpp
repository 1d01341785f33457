#include "Runner/SessionLogText.h"
#include "Tests/Runner/RandomSessionLog.h"
#include "Tests/Runner/SessionLogReference.h"
#include "Tests/Runner/SessionLogTest.h"

namespace zephyx {
namespace {

TEST_F(SessionLogTest, AnyLogsGiveWhatTheRulesGiveOneByOne) {
  std::size_t models = 0;
  for (unsigned seed = 0; seed < 1500; ++seed) {
    SCOPED_TRACE(seed);
    RandomSessionLog random(seed);
    std::vector<std::string> logs;
    for (const auto* name : {"a.jsonl", "b/.hidden/c.jsonl"}) {
      logs.push_back(random.log());
      write(name, logs.back());
    }
    // Lines are divided between blocks, and are too long for the buffer.
    const std::size_t block = 10 + random.pick(random.pick(2) == 0 ? 100 : 1000);
    const SessionLogScanOptions options{
        .threads = 1, .buffer = {.block = block, .line = block + 10 + random.pick(500)}};
    const auto expected = referenceBreakdown(logs, RandomSessionLog::since);
    ASSERT_EQ(localModelBreakdown(root_, RandomSessionLog::since, options), expected);
    ASSERT_EQ(localModelBreakdown(root_, RandomSessionLog::since), expected);
    models += expected.size();
  }
  EXPECT_GT(models, 2000u);
}

TEST_F(SessionLogTest, SeveralThreadsFindWhatOneFinds) {
  RandomSessionLog random(1);
  std::vector<std::string> logs;
  for (int number = 0; number < 60; ++number) {
    logs.push_back(random.log() + std::string(100'000, ' ') + "\n" + line("all", "1"));
    write(std::to_string(number) + ".jsonl", logs.back());
  }
  const auto expected = referenceBreakdown(logs, RandomSessionLog::since);
  for (const unsigned threads : {1, 2, 8}) {
    EXPECT_EQ(localModelBreakdown(root_, RandomSessionLog::since, {.threads = threads}), expected);
  }
}

TEST_F(SessionLogTest, TheMentionIsFoundWhereverItStands) {
  for (std::size_t before = 0; before < 300; ++before) {
    const auto text = std::string(before, '"') + std::string(usageMention) + std::string(200, '"');
    EXPECT_EQ(findUsageMention(text), before);
    EXPECT_EQ(findUsageMention(std::string_view(text).substr(0, before + usageMention.size())),
              before);
    EXPECT_EQ(findUsageMention(std::string_view(text).substr(0, before + usageMention.size() - 1)),
              std::string_view::npos);
    EXPECT_EQ(beginningOfLastLine(std::string(before, 'a') + "\n" + std::string(17, 'b')),
              before + 1);
  }
  EXPECT_EQ(beginningOfLastLine("no line feed, and more than sixteen bytes"), 0u);
}

TEST_F(SessionLogTest, JsonBeyondAParsersMeansStillCounts) {
  const std::string deep(200'000, '[');
  const std::string closed = deep + std::string(deep.size(), ']');
  write("a.jsonl", line("number", "1", R"(,"x":123456789012345678901234567890)") +
                       line("deep", "2", R"(,"x":)" + closed) +
                       line("both", "3", R"(,"x":99999999999999999999999,"y":)" + closed) +
                       line("open", "4", R"(,"x":)" + deep));
  EXPECT_EQ(scan(), "both 3, deep 2, number 1");
}

TEST_F(SessionLogTest, ASumBeyond64BitsEndsTheProcess) {
  const auto most = std::to_string(INT64_MAX);
  write("a.jsonl", line("a", most));
  EXPECT_EQ(scan(), "a " + most);
  write("b.jsonl", line("a", "1"));
  EXPECT_DEATH(scan(), "");
  // The total that models are sorted by is such a sum too.
  write("b.jsonl", line("a", R"(0,"output_tokens":1)") + line("b", "1"));
  EXPECT_DEATH(scan(), "");
}

}  // namespace
}  // namespace zephyx
