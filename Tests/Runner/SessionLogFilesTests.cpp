#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <thread>

#include "Tests/Runner/SessionLogTest.h"

namespace zephyx {
namespace {

namespace fs = std::filesystem;

TEST_F(SessionLogTest, OnlyChangedLogsWithTheExtensionAreRead) {
  EXPECT_EQ(scan(), "");
  write("project/.hidden/a.jsonl", line("hidden", "10"));
  write("folder.jsonl/b.jsonl", line("inside", "30"));
  for (const auto* name : {"c.JSONL", "c.json", "c.jsonl.bak", "cjsonl", ".jsonl"}) {
    write(name, line("other", "50"));
  }
  setDate(write("equal.jsonl", line("equal", "20")), since);
  setDate(write("older.jsonl", line("older", "20")), std::nextafter(since, 0));
  EXPECT_EQ(scan(), "inside 30, equal 20, hidden 10");
}

TEST_F(SessionLogTest, LinksToLogsAreReadAndLinksToFoldersAreNotFollowed) {
  write("a/b/c.jsonl", line("c", "1"));
  fs::create_directory_symlink(root_, root_ / "a/b/again");
  fs::create_directory_symlink(root_ / "a", root_ / "twice.jsonl");
  fs::create_symlink(root_ / "circle.jsonl", root_ / "circle.jsonl");
  fs::create_symlink("nowhere", root_ / "dangling.jsonl");
  const fs::path outside = directories_.home() + "/outside";
  std::ofstream(outside) << line("outside", "5");
  fs::create_symlink(outside, root_ / "link.jsonl");
  ASSERT_EQ(mkfifo((root_ / "pipe.jsonl").c_str(), 0600), 0);
  EXPECT_EQ(scan(), "outside 5, c 1");
  setDate(outside, since - 1);
  EXPECT_EQ(scan(), "c 1");
}

TEST_F(SessionLogTest, WhatIsNotReadableIsPassedOver) {
  write("a/open.jsonl", line("open", "1"));
  write("b/closed/x.jsonl", line("closed", "1"));
  fs::permissions(write("c/closed.jsonl", line("closed", "1")), fs::perms::none);
  write("d/open.jsonl", line("open", "1"));
  fs::permissions(root_ / "b/closed", fs::perms::none);
  // The administrator may read everything, so this is done as somebody else.
  const auto scanAsOther = [&] {
    fs::permissions(directories_.home(), fs::perms(0755));
    if (geteuid() == 0 && seteuid(65534) != 0) std::_Exit(2);
    std::_Exit(scan() == "open 2" ? 0 : 1);
  };
  EXPECT_EXIT(scanAsOther(), testing::ExitedWithCode(0), "");
  fs::permissions(root_ / "b/closed", fs::perms::all);
}

TEST_F(SessionLogTest, LogsMayGrowAndVanishMeanwhile) {
  write("kept.jsonl", line("kept", "7"));
  std::atomic<bool> isDone = false;
  std::jthread tool([&] {
    for (unsigned round = 0; !isDone; ++round) {
      const auto folder = std::to_string(round % 3);
      const auto path = write(folder + "/log.jsonl", line("torn", "1"));
      std::ofstream(path, std::ios::app) << line("torn", "1").substr(0, round % 80);
      if (round % 2 == 0) fs::remove_all(root_ / folder);
    }
  });
  for (int round = 0; round < 300; ++round) {
    const auto found = scan({.buffer = {.block = 16, .line = 64}});
    EXPECT_EQ(found.substr(0, 6), "kept 7");
  }
  isDone = true;
}

TEST_F(SessionLogTest, AnInvalidByteNearTheEndTakesTheWholeLogBack) {
  const auto valid = line("a", "1") + std::string(5 << 20, 'x') + "\n" + line("a", "2");
  const auto path = write("a.jsonl", valid);
  EXPECT_EQ(scan(), "a 3");
  for (const auto* tail : {"\xC3", "\xE2\x82", "ok\n\xFF"}) {
    write("a.jsonl", valid + tail);
    EXPECT_EQ(scan(), "") << tail;
  }
  write("a.jsonl", valid + "\xC3\xA4");
  EXPECT_EQ(scan(), "a 3");
}

TEST_F(SessionLogTest, OnlyALongLineThatCountsTakesMemory) {
  const auto peak = [] {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;  // in KB here, in bytes on a Mac: the larger unit is the laxer one
  };
  const auto path = write("a.jsonl", line("a", "1"));
  fs::resize_file(path, 300 << 20);
  std::ofstream(path, std::ios::app) << "\n" << line("a", "2");
  const auto before = peak();
  EXPECT_EQ(scan(), "a 3");
  EXPECT_LT(peak() - before, 30 << 10);

  write("a.jsonl", line("a", "4", R"(,"text":")" + std::string(20 << 20, 'x') + R"(")"));
  EXPECT_EQ(scan(), "a 4");
}

}  // namespace
}  // namespace zephyx
