#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>

#include "Platform/Linux/Statistics/LinuxHostStatistics.h"
#include "Tests/Desktop/TemporaryDirectory.h"

namespace zephyx {
namespace {

class HostStatisticsTest : public testing::Test {
 protected:
  void write(const std::string& file, const std::string& text) const {
    std::ofstream(folder_.path() / file, std::ios::trunc) << text;
  }
  LinuxHostStatistics statistics() const { return LinuxHostStatistics(folder_.path().string()); }

 private:
  TemporaryDirectory folder_;
};

TEST_F(HostStatisticsTest, WaitingForADiskIsIdleAndTimeTakenByAnotherMachineIsBusy) {
  write("stat",
        "cpu  100 20 30 4000 500 6 7 8 90 1\n"
        "cpu0 100 20 30 4000 500 6 7 8 90 1\n"
        "intr 12345 0 9\n");
  const auto ticks = statistics().processorTicks();
  ASSERT_TRUE(ticks);
  EXPECT_EQ(ticks->user, 100u);
  EXPECT_EQ(ticks->nice, 20u);
  EXPECT_EQ(ticks->system, 30u + 6 + 7 + 8);
  EXPECT_EQ(ticks->idle, 4500u);
}

TEST_F(HostStatisticsTest, ReadsWhatTheSameFileSaysLater) {
  write("stat", "cpu  1 2 3 4 0 0 0 0 0 0\n");
  write("meminfo", "MemTotal: 1000 kB\nMemFree: 100 kB\nMemAvailable: 250 kB\n");
  auto opened = statistics();
  EXPECT_EQ(opened.processorTicks()->user, 1u);
  EXPECT_EQ(opened.memoryLevel(), 25);
  write("stat", "cpu  18446744073709 2 3 4 0 0 0 0 0 0\n");
  write("meminfo", "MemTotal: 1000 kB\nMemFree: 100 kB\nMemAvailable: 786 kB\n");
  EXPECT_EQ(opened.processorTicks()->user, 18446744073709u);
  EXPECT_EQ(opened.memoryLevel(), 79);
}

TEST_F(HostStatisticsTest, WhatTheKernelDoesNotTellIsNothing) {
  auto missing = statistics();
  EXPECT_FALSE(missing.processorTicks());
  EXPECT_FALSE(missing.memoryLevel());
  EXPECT_FALSE(missing.memoryPages());
  EXPECT_EQ(missing.physicalMemory(), 0u);
  for (const char* text : {"", "cpu", "cpu  1 2 3\n", "cpu0 1 2 3 4 5\n", "cpu  a b c d\n"}) {
    SCOPED_TRACE(text);
    write("stat", text);
    EXPECT_FALSE(statistics().processorTicks());
  }
  for (const char* text :
       {"MemTotal: 0 kB\nMemAvailable: 0 kB\n", "MemTotal: 5 kB\n", "MemTotal:\nMemAvailable: 5\n",
        "MemTotal: -5 kB\nMemAvailable: -5 kB\n"}) {
    SCOPED_TRACE(text);
    write("meminfo", text);
    EXPECT_FALSE(statistics().memoryLevel());
  }
}

TEST_F(HostStatisticsTest, AnOldKernelTellsWhereItsPagesAre) {
  write("meminfo",
        "MemTotal:        8000000 kB\nMemFree:          500000 kB\nCached:          1500000 kB\n"
        "AnonPages:       3000000 kB\nShmem:            200000 kB\nSUnreclaim:       100000 kB\n"
        "KernelStack:       20000 kB\nPageTables:        40000 kB\n");
  auto old = statistics();
  EXPECT_FALSE(old.memoryLevel());
  EXPECT_EQ(old.physicalMemory(), 8'000'000ull * 1024);
  const auto pages = old.memoryPages();
  ASSERT_TRUE(pages);
  EXPECT_EQ(pages->pageSize, static_cast<std::uint64_t>(getpagesize()));
  EXPECT_EQ(pages->internal * pages->pageSize, 3'200'000ull * 1024);
  EXPECT_EQ(pages->wired * pages->pageSize, 160'000ull * 1024);
  EXPECT_EQ(pages->purgeable + pages->compressor, 0u);
}

}  // namespace
}  // namespace zephyx
