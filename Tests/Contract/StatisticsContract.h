#pragma once

#include "Platform/HostStatistics.h"
#include "Platform/TemperatureSensors.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

/// The machine's load and its temperature sensors.
class StatisticsContract : public ContractTest {
 protected:
  HostStatistics& statistics() { return platform().hostStatistics(); }
  TemperatureSensors& sensors() { return platform().temperatureSensors(); }
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

TEST_P(StatisticsContract, TheSensorOnTheDieIsReadAnewEachTime) {
  EXPECT_TRUE(sensors().readings().empty());
  for (const double celsius : {41.5, 88.0, 0.0}) {
    desktop().setDieTemperature(celsius);
    const auto readings = sensors().readings();
    ASSERT_EQ(readings.size(), 1u);
    EXPECT_EQ(readings[0].name.rfind("PMU tdie", 0), 0u) << readings[0].name;
    EXPECT_DOUBLE_EQ(readings[0].celsius, celsius);
  }
  desktop().setDieTemperature(std::nullopt);
  EXPECT_TRUE(sensors().readings().empty());
}

}  // namespace zephyx
