#include <QtWidgets/QWidget>

#include "Tests/Desktop/UpdateTest.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

class UpdateFeedTest : public UpdateTest {
 protected:
  void ask(const UpdateConfiguration& configuration) {
    start(configuration);
    updates().checkForUpdates();
  }
};

TEST_F(UpdateFeedTest, WhatIsWrongWithAFeedIsSaidInWords) {
  feed().offer("2.0", "package");
  const struct {
    const char* name;
    HttpsReply file;
    const char* words;
  } cases[] = {
      {"gone", {.status = 404}, "error 404"},
      {"something else", {.body = "<html><body>Sign in</body></html>"}, "no update feed"},
      {"too large", {.body = std::string(2'000'000, ' ')}, "larger than it may be"},
      {"slow", dripping, "too slow"},
      {"cut short", {.body = std::string(5'000, ' '), .cutsOff = true}, "could not be loaded"},
      {"moved away",
       {.status = 301, .headers = "Location: http://updates.example/\r\n"},
       "secure connection"},
      {"moved to a file",
       {.status = 301, .headers = "Location: file:///etc/passwd\r\n"},
       "could not be loaded"},
      {"damaged", {.body = "<rss><channel><item>"}, "cannot be understood"},
  };
  auto quick = configuration();
  quick.limits.feedTime = 400ms;
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    server().set("/feed.xml", each.file);
    ask(quick);
    EXPECT_TRUE(waitForWords("Checking for updates failed"));
    EXPECT_TRUE(waitForWords(each.words));
  }
  EXPECT_TRUE(told.empty());
}

TEST_F(UpdateFeedTest, ACheckThatTakesLongCanBeCancelled) {
  server().set("/feed.xml", dripping);
  ask(configuration());
  ASSERT_TRUE(waitForWords("Checking for updates"));
  ASSERT_TRUE(runUntil([&] { return server().requests("/feed.xml") == 1; }));
  ASSERT_TRUE(runUntil(
      [&] { return desktop().windows().active() == static_cast<WindowId>(window()->winId()); }));
  desktop().input().tap(key::Escape);
  EXPECT_TRUE(runUntil([] { return !window(); }));
  EXPECT_TRUE(staysTrue([] { return !window(); }, 150ms));
}

TEST_F(UpdateFeedTest, AMovedFeedIsFollowed) {
  feed().offer("2.0", "package");
  server().set("/old.xml", {.status = 301, .headers = "Location: /feed.xml\r\n"});
  ask(configuration(QString::fromStdString(server().address() + "/old.xml")));
  EXPECT_TRUE(waitForWords("2.0 is now available"));
}

TEST_F(UpdateFeedTest, AServerMustProveItsName) {
  HttpsServer secure(desktop().home());
  UpdateFeed secureFeed(secure);
  secureFeed.offer("2.0", "package");
  ask(configuration(secureFeed.address()));
  EXPECT_TRUE(waitForWords("could not be loaded"));
  EXPECT_EQ(secure.requests("/feed.xml"), 0);

  qputenv("SSL_CERT_FILE", HttpsServer::certificateIn(desktop().home()).c_str());
  ask(configuration(secureFeed.address()));
  EXPECT_TRUE(waitForWords("2.0 is now available"));
  qunsetenv("SSL_CERT_FILE");
}

}  // namespace
}  // namespace zephyx
