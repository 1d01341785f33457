#include <sys/stat.h>

#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

using ProgramLifeTest = ProgramTest;

TEST_F(ProgramLifeTest, ASecondStartBringsTheMainWindowUpAndEnds) {
  const TargetProgram other(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(waitFor([&] { return !program().mainWindow(); }));
  auto second = desktop().start({ZephyxProcess::executable().string()});
  EXPECT_EQ(second.waitForExit(), 0);
  EXPECT_TRUE(waitFor([&] {
    const auto window = program().mainWindow();
    return window && windows().active() == window->id;
  }));
}

TEST_F(ProgramLifeTest, KillingItAtAnyMomentLosesNoRecordedEntry) {
  std::vector<std::string> texts;
  for (const int distance : {0, 3, 11}) {
    const auto before = program().history().count();
    std::vector<std::string> shown;
    for (int index = 0; index < 12; ++index)
      desktop().copy("before the end " + std::to_string(distance) + "/" + std::to_string(index));
    ASSERT_TRUE(waitForNewEntries(4));
    pass(std::chrono::milliseconds(distance));
    for (const auto& row : program().history().rows()) shown.push_back(row.text);
    program().process().kill();
    startProgram();
    std::vector<std::string> kept;
    for (const auto& row : program().history().rows()) kept.push_back(row.text);
    ASSERT_GE(kept.size(), shown.size());
    kept.resize(shown.size());
    EXPECT_EQ(kept, shown);
    EXPECT_GT(program().history().count(), before);
  }
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  const auto newest = program().history().rows().back().text;
  ASSERT_TRUE(openPanel());
  input().tap(key::Return);
  EXPECT_TRUE(target.waitForText(newest)) << target.text();
}

TEST_F(ProgramLifeTest, WhatItStoresIsReadableByItsUserAlone) {
  desktop().run({"convert", "-size", "500x500", "plasma:", (desktop().home() / "p.png").string()});
  desktop().copy(readFile(desktop().home() / "p.png"), "image/png");
  ASSERT_TRUE(waitForNewEntries(1));
  std::size_t files = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(program().dataFolder())) {
    if (!entry.is_regular_file()) continue;
    ++files;
    struct stat status {};
    ASSERT_EQ(stat(entry.path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0077, 0u) << entry.path();
  }
  EXPECT_GE(files, 3u);
}

TEST_F(ProgramLifeTest, TheLogHoldsNothingOfWhatWasCopiedAndPasted) {
  const std::string secret = "qzjxkv-the-users-own-words";
  desktop().copy(secret);
  ASSERT_TRUE(program().waitForEntry(secret));
  const TargetProgram target(desktop(), TargetProgram::Kind::Qt);
  ASSERT_TRUE(openPanel());
  input().tap(key::Return);
  ASSERT_TRUE(target.waitForText(secret));
  EXPECT_GT(program().logCount("[PasteBack]"), 0u);
  EXPECT_EQ(program().logCount("qzjxkv"), 0u);
}

}  // namespace
}  // namespace zephyx
