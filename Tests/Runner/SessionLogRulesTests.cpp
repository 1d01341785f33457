#include "Runner/SessionLogText.h"
#include "Tests/Runner/SessionLogReference.h"
#include "Tests/Runner/SessionLogTest.h"

namespace zephyx {
namespace {

/// Logs with everything that can be wrong with one. Some lines are stamped then, others before or
/// after it: 2025-06-01T12:00:00.5Z.
constexpr double sinceThen = 1748779200.5;

std::vector<std::string> sampleLogs() {
  std::vector<std::string> logs;
  for (const auto& entry : std::filesystem::directory_iterator(ZEPHYX_TEST_DATA "/session_logs")) {
    std::ifstream file(entry.path(), std::ios::binary);
    logs.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return logs;
}

TEST_F(SessionLogTest, AnyLogsGiveWhatTheRulesGiveOneByOneHoweverTheyAreDivided) {
  std::size_t models = 0;
  for (const auto& log : sampleLogs()) {
    write("a.jsonl", log);
    write("b/.hidden/c.jsonl", log);
    const auto expected = referenceBreakdown({log, log}, sinceThen);
    ASSERT_EQ(localModelBreakdown(root_, sinceThen), expected);
    // Lines are divided between blocks, and are too long for the buffer.
    for (std::size_t block = 10; block < 1000; block += 1 + block / 8) {
      const SessionLogScanOptions options{
          .threads = 1, .buffer = {.block = block, .line = block + 10 + block % 7 * 70}};
      ASSERT_EQ(localModelBreakdown(root_, sinceThen, options), expected) << block << log;
    }
    models += expected.size();
  }
  EXPECT_GT(models, 80u);
}

TEST_F(SessionLogTest, SeveralThreadsFindWhatOneFinds) {
  auto logs = sampleLogs();
  for (std::size_t number = 0; number < logs.size(); ++number) {
    logs[number] += std::string(100'000, ' ') + "\n" + line("all", "1");
    write(std::to_string(number) + ".jsonl", logs[number]);
  }
  const auto expected = referenceBreakdown(logs, sinceThen);
  for (const unsigned threads : {1, 2, 8}) {
    EXPECT_EQ(localModelBreakdown(root_, sinceThen, {.threads = threads}), expected);
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
