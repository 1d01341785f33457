#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDeadlineTimer>
#include <fstream>
#include <sstream>

#include "Platform/Linux/LinuxUserDefaults.h"
#include "Platform/SystemLog.h"
#include "Tests/Desktop/FullDisk.h"
#include "Tests/Desktop/TemporaryDirectory.h"

namespace zephyx {
namespace {

struct CountingLog final : SystemLog {
  void log(std::string_view) override { ++lines; }
  int lines = 0;
};

class UserDefaultsFileTest : public testing::Test {
 protected:
  std::string folder() const { return (home_.path() / "config" / "com.zephyx.app").string(); }
  std::string file() const { return folder() + "/defaults.json"; }
  std::string contents(const std::string& path) const {
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
  }

  static bool becomesTrue(const std::function<bool()>& condition, int milliseconds = 1000) {
    QDeadlineTimer deadline(milliseconds);
    while (!condition() && !deadline.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return condition();
  }

  CountingLog log_;

 private:
  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  TemporaryDirectory home_;
};

TEST_F(UserDefaultsFileTest, AChangeIsOnDiskWithinATenthOfASecondForTheUserAlone) {
  LinuxUserDefaults defaults(folder(), log_);
  defaults.setString("flutter.name", "Zoë");
  (void)becomesTrue([&] { return contents(file()).find("flutter.name") != std::string::npos; },
                    100);
  // As a process that is killed now would leave it.
  EXPECT_EQ(LinuxUserDefaults(folder(), log_).string("flutter.name"), "Zoë");
  struct stat status {};
  ASSERT_EQ(stat(file().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  ASSERT_EQ(stat(folder().c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0700u);
}

TEST_F(UserDefaultsFileTest, ADamagedFileIsKeptAsideAndNotWrittenOver) {
  std::filesystem::create_directories(folder());
  std::ofstream(file()) << "{\"flutter.name\": {\"stri";
  {
    LinuxUserDefaults defaults(folder(), log_);
    EXPECT_EQ(defaults.string("flutter.name"), std::nullopt);
    EXPECT_EQ(log_.lines, 1);
    defaults.setString("other", "value");
  }
  EXPECT_EQ(contents(file() + ".damaged"), "{\"flutter.name\": {\"stri");
  EXPECT_EQ(LinuxUserDefaults(folder(), log_).string("other"), "value");

  std::ofstream(file()) << "[]";
  LinuxUserDefaults(folder(), log_).setString("other", "again");
  EXPECT_EQ(contents(file() + ".damaged"), "{\"flutter.name\": {\"stri");
  std::filesystem::remove(file());
  std::filesystem::create_directory(file());  // as little to be read as another user's file
  LinuxUserDefaults(folder(), log_).setString("other", "at last");
  EXPECT_EQ(LinuxUserDefaults(folder(), log_).string("other"), "at last");
  EXPECT_EQ(log_.lines, 3);
  std::size_t kept = 0;
  for (const auto& each : std::filesystem::directory_iterator(folder())) {
    kept += each.path().filename().string().starts_with("defaults.json.damaged");
  }
  EXPECT_EQ(kept, 3u);
}

TEST_F(UserDefaultsFileTest, WhatALaterVersionWroteSurvivesAWrite) {
  std::filesystem::create_directories(folder());
  std::filesystem::copy_file(ZEPHYX_TEST_DATA "/homes/newer/defaults.json", file());
  {
    LinuxUserDefaults defaults(folder(), log_);
    EXPECT_EQ(defaults.string("flutter.clipboardHistoryLimit"), "250");
    EXPECT_EQ(defaults.string("sync.v3"), std::nullopt);
    EXPECT_EQ(defaults.string("theme"), std::nullopt);
    defaults.setString("other", "value");
  }
  const auto written = contents(file());
  for (const auto* part :
       {"\"sync.v3\"", "\"etag\": \"x\"", "\"theme\": \"plain text\"", "\"since\""}) {
    EXPECT_NE(written.find(part), std::string::npos) << part;
  }
}

TEST_F(UserDefaultsFileTest, WhatCannotBeWrittenIsSaidOnceAndWrittenAsSoonAsItCan) {
  LinuxUserDefaults defaults(folder(), log_, std::chrono::milliseconds(20));
  {
    const FullDisk full;
    defaults.setString("key", "value");
    EXPECT_FALSE(becomesTrue([&] { return log_.lines > 1; }, 200));
    EXPECT_EQ(log_.lines, 1);
    EXPECT_EQ(defaults.string("key"), "value");
    EXPECT_TRUE(contents(file()).empty());
  }
  EXPECT_TRUE(becomesTrue([&] { return !contents(file()).empty(); }));
  EXPECT_EQ(LinuxUserDefaults(folder(), log_).string("key"), "value");
  EXPECT_EQ(log_.lines, 2);
}

}  // namespace
}  // namespace zephyx
