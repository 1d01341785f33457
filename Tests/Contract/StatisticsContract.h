#pragma once

#include "Platform/HostStatistics.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

/// The machine's load.
class StatisticsContract : public ContractTest {
 protected:
  HostStatistics& statistics() { return platform().hostStatistics(); }
};

TEST_P(StatisticsContract, ProcessorTicksGoOnWithTime) {
  const auto total = [this] {
    const auto ticks = statistics().processorTicks();
    return ticks ? ticks->user + ticks->system + ticks->idle + ticks->nice : 0;
  };
  const auto before = total();
  ASSERT_GT(before, 0u);
  EXPECT_TRUE(becomesTrue([&] { return total() >= before + 10; }));
}

TEST_P(StatisticsContract, MemoryAndDiskAreFiguresThatFitTogether) {
  const auto level = statistics().memoryLevel();
  ASSERT_TRUE(level);
  EXPECT_GT(*level, 0);
  EXPECT_LE(*level, 100);
  const auto pages = statistics().memoryPages();
  ASSERT_TRUE(pages);
  EXPECT_GE(pages->pageSize, 4096u);
  EXPECT_EQ(pages->pageSize & (pages->pageSize - 1), 0u);
  EXPECT_GT(pages->internal, pages->purgeable);
  EXPECT_GT(pages->wired, 0u);
  EXPECT_LT((pages->internal + pages->wired) * pages->pageSize, statistics().physicalMemory());

  const auto volume = statistics().volumeCapacity("/");
  ASSERT_TRUE(volume);
  EXPECT_GT(volume->total, 0u);
  EXPECT_LE(volume->available, volume->total);
  EXPECT_FALSE(statistics().volumeCapacity("/no such folder"));
}

INSTANTIATE_TEST_SUITE_P(Desktops, StatisticsContract, contractDesktops(), contractRunName);

}  // namespace zephyx
