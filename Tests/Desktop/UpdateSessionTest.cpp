#include <QtCore/QFile>
#include <QtCore/QUrl>
#include <QtWidgets/QWidget>
#include <ctime>

#include "Tests/Desktop/UpdateTest.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

const QByteArray package = QByteArray("a package ").repeated(20'000);

class UpdateSessionTest : public UpdateTest {
 protected:
  void offer(const char* version) { feed().offer(version, package); }
  bool isActive() {
    return window() && desktop().windows().active() == static_cast<WindowId>(window()->winId());
  }
  /// Has found 2.0 in the background, without a window.
  void findInTheBackground() {
    offer("2.0");
    start(checkingAtOnce());
    ASSERT_TRUE(runUntil([&] { return told.size() >= 2; }));
  }
  /// The user has asked, and sees 2.0.
  void findByAsking(UpdateConfiguration configuration) {
    start(std::move(configuration));
    updates().checkForUpdates();
    ASSERT_TRUE(waitForWords("A new version of Zephyx is available"));
  }
};

TEST_F(UpdateSessionTest, AnUpdateFoundInTheBackgroundWaitsWithoutAWindowUntilTheUserAsks) {
  findInTheBackground();
  EXPECT_TRUE(staysTrue([] { return !window(); }, 200ms));
  EXPECT_EQ(told, (Lines{"found 2.0 in the background", "reminder of 2.0"}));

  updates().checkForUpdates();
  ASSERT_TRUE(waitForWords("Zephyx 2.0 is now available, you have 1.0"));
  EXPECT_NE(words().find("twice as fast"), std::string::npos);
  EXPECT_TRUE(runUntil([&] { return told.back() == "seen 2.0"; }));
  EXPECT_EQ(server().requests("/feed.xml"), 1) << "it had been found";
  EXPECT_TRUE(runUntil([&] { return isActive(); }));
  updates().checkForUpdates();
  EXPECT_TRUE(staysTrue([] { return window() != nullptr; }, 50ms)) << "brought to the front only";

  press("Remind Me Later");
  EXPECT_FALSE(window());
  EXPECT_EQ(told.size(), 3u);
  updates().checkForUpdates();
  EXPECT_TRUE(waitForWords("2.0 is now available"));
  EXPECT_EQ(told[3], "window for 2.0, asked for");
  EXPECT_TRUE(runUntil([&] { return isActive(); }));
  EXPECT_EQ(told.size(), 5u);
  EXPECT_EQ(told.back(), "seen 2.0");
}

TEST_F(UpdateSessionTest, RightAfterTheStartInFrontTheWindowComesByItself) {
  isInFront = true;
  findInTheBackground();
  EXPECT_TRUE(waitForWords("2.0 is now available"));
  EXPECT_TRUE(runUntil([&] { return told.size() == 3; }));
  EXPECT_EQ(told, (Lines{"found 2.0 in focus", "window for 2.0", "seen 2.0"}));
}

TEST_F(UpdateSessionTest, ASkippedVersionIsOnlyShownToThoseWhoAsk) {
  offer("2.0");
  findByAsking(configuration());
  press("Skip This Version");
  EXPECT_FALSE(window());
  defaults().removeObject("updates.lastCheck");
  told.clear();
  start(checkingAtOnce());
  ASSERT_TRUE(runUntil([&] { return server().requests("/feed.xml") == 2; }));
  EXPECT_TRUE(staysTrue([&] { return told.empty(); }, 200ms));
  updates().checkForUpdates();
  EXPECT_TRUE(waitForWords("2.0 is now available"));
}

TEST_F(UpdateSessionTest, ChecksAreADayApartAlsoAcrossStarts) {
  offer("1");
  const auto checksAtStart = [&](double secondsAgo) {
    const int before = server().requests("/feed.xml");
    defaults().setString(
        "updates.lastCheck",
        std::to_string(std::llround(static_cast<double>(std::time(nullptr)) - secondsAgo)));
    start(checkingAtOnce());
    return !staysTrue([&] { return server().requests("/feed.xml") == before; }, 600ms);
  };
  EXPECT_FALSE(checksAtStart(60));
  EXPECT_FALSE(checksAtStart(23.9 * 3'600));
  EXPECT_TRUE(checksAtStart(24.1 * 3'600)) << "the machine may have slept meanwhile";
  EXPECT_TRUE(checksAtStart(-7'200)) << "the clock was wrong";
  start(checkingAtOnce());
  EXPECT_TRUE(staysTrue([&] { return server().requests("/feed.xml") == 2; }, 150ms));
}

TEST_F(UpdateSessionTest, WithoutANewerVersionTheUserIsToldAndNobodyElse) {
  const struct {
    const char *offered, *words;
  } cases[] = {{"1.0", "Zephyx 1.0 is the newest version available"},
               {"0.9", "newer than the newest version on offer, which is 0.9"}};
  for (const auto& each : cases) {
    offer(each.offered);
    start(configuration());
    updates().checkForUpdates();
    EXPECT_TRUE(waitForWords(each.words));
    press("OK");
    EXPECT_FALSE(window());
  }
  EXPECT_TRUE(told.empty());
}

TEST_F(UpdateSessionTest, AReminderEndsWhenTheReleaseIsWithdrawn) {
  offer("2.0");
  auto restless = checkingAtOnce();
  restless.clockInterval = 20ms;
  start(restless);
  ASSERT_TRUE(runUntil([&] { return told.size() == 2; }));
  server().set("/feed.xml", {.status = 500});
  defaults().removeObject("updates.lastCheck");
  ASSERT_TRUE(runUntil([&] { return server().requests("/feed.xml") == 2; }));
  EXPECT_TRUE(staysTrue([&] { return told.size() == 2; }, 100ms)) << "that says nothing";
  offer("1.0");
  defaults().removeObject("updates.lastCheck");
  EXPECT_TRUE(runUntil([&] { return told.size() == 3; }));
  EXPECT_EQ(told.back(), "seen 2.0");
  EXPECT_EQ(server().requests("/feed.xml"), 3);
  updates().checkForUpdates();
  EXPECT_TRUE(waitForWords("newest version available"));
}

TEST_F(UpdateSessionTest, AVerifiedPackageIsHandedToTheDesktop) {
  offer("2.0");
  findByAsking(configuration());
  press("Install Update");
  ASSERT_TRUE(waitForWords("handed to your program for packages"));
  ASSERT_EQ(opened.size(), 1);
  QFile file(QUrl(opened.front()).toLocalFile());
  ASSERT_TRUE(file.open(QIODevice::ReadOnly)) << opened.front().toStdString();
  EXPECT_TRUE(file.fileName().endsWith(QStringLiteral("/zephyx-2.0.deb")));
  EXPECT_EQ(file.readAll(), package);
  EXPECT_EQ(file.permissions() & QFileDevice::Permissions(0x00ff), QFileDevice::Permissions());
  EXPECT_EQ(filesInFolder().size(), 1);
}

TEST_F(UpdateSessionTest, ADownloadThatIsNotWhatWasSignedIsRemovedAndNotOpened) {
  auto shortened = package;
  shortened.chop(1);
  auto changed = package;
  changed[17] = '!';
  const struct {
    const char* name;
    HttpsReply file;
    const char* words;
  } cases[] = {
      {"one byte differs",
       {.body = changed.toStdString()},
       "signature is not by those who make Zephyx"},
      {"shorter", {.body = shortened.toStdString()}, "not as long as the feed says"},
      {"longer", {.body = package.toStdString() + "!"}, "larger than it may be"},
      {"cut short", {.body = shortened.toStdString(), .cutsOff = true}, "was not installed"},
      {"gone", {.status = 404}, "error 404"},
      {"stalled", dripping, "too slow"},
      {"moved away",
       {.status = 302, .headers = "Location: http://updates.example/z\r\n"},
       "secure connection"},
      {"moved in circles",
       {.status = 302, .headers = "Location: /zephyx.deb\r\n"},
       "was not installed"},
  };
  auto quick = configuration();
  quick.limits.patience = 400ms;
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    offer("2.0");
    server().set("/zephyx.deb", each.file);
    findByAsking(quick);
    press("Install Update");
    EXPECT_TRUE(waitForWords("The update was not installed"));
    EXPECT_TRUE(waitForWords(each.words));
    EXPECT_TRUE(opened.empty());
    EXPECT_TRUE(filesInFolder().empty());
  }
}

TEST_F(UpdateSessionTest, APackageThatAnotherKeySignedIsRefused) {
  offer("2.0");
  auto foreign = configuration();
  foreign.publicKey = UpdateFeed(server()).publicKey();
  findByAsking(foreign);
  press("Install Update");
  EXPECT_TRUE(waitForWords("signature is not by those who make Zephyx"));
  EXPECT_TRUE(opened.empty());
}

TEST_F(UpdateSessionTest, ARunningDownloadShowsHowFarItIsAndCanBeCancelled) {
  offer("2.0");
  server().set("/zephyx.deb", dripping);
  findByAsking(configuration());
  press("Install Update");
  ASSERT_TRUE(waitForWords("of 195.31 KiB"));
  EXPECT_EQ(filesInFolder().size(), 1);
  press("Cancel");
  EXPECT_FALSE(window());
  EXPECT_TRUE(filesInFolder().empty());
  EXPECT_TRUE(staysTrue([&] { return opened.empty() && !window(); }, 150ms));
}

}  // namespace
}  // namespace zephyx
