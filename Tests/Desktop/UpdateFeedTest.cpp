#include <QtCore/QFile>
#include <QtNetwork/QSslCertificate>
#include <QtNetwork/QSslKey>
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
  /// A certificate for this machine, by nobody that anybody trusts.
  QSslConfiguration makeCertificate(const std::string& path) {
    const auto key = path + ".key";
    desktop().run({"openssl", "req", "-x509", "-newkey", "ec", "-pkeyopt",
                   "ec_paramgen_curve:prime256v1", "-nodes", "-days", "2", "-subj", "/CN=here",
                   "-addext", "subjectAltName=IP:127.0.0.1", "-keyout", key, "-out", path});
    QFile certificateFile(QString::fromStdString(path)), keyFile(QString::fromStdString(key));
    if (!certificateFile.open(QIODevice::ReadOnly) || !keyFile.open(QIODevice::ReadOnly)) {
      throw std::runtime_error("no certificate");
    }
    auto tls = QSslConfiguration::defaultConfiguration();
    tls.setLocalCertificate(QSslCertificate(&certificateFile));
    tls.setPrivateKey(QSslKey(&keyFile, QSsl::Ec));
    return tls;
  }
};

TEST_F(UpdateFeedTest, WhatIsWrongWithAFeedIsSaidInWords) {
  feed().offer("2.0", "package");
  const struct {
    const char* name;
    UpdateServer::File file;
    const char* words;
  } cases[] = {
      {"gone", {.status = 404}, "error 404"},
      {"something else", {.body = "<html><body>Sign in</body></html>"}, "no update feed"},
      {"too large", {.body = QByteArray(2'000'000, ' ')}, "larger than it may be"},
      {"slow", {.drips = true}, "too slow"},
      {"cut short", {.body = QByteArray(5'000, ' '), .isCutShort = true}, "could not be loaded"},
      {"moved away", {.status = 301, .location = "http://updates.example/"}, "secure connection"},
      {"moved to a file", {.status = 301, .location = "file:///etc/passwd"}, "could not be loaded"},
      {"damaged", {.body = "<rss><channel><item>"}, "cannot be understood"},
  };
  auto quick = configuration();
  quick.limits.feedTime = 400ms;
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    server().set("feed.xml", each.file);
    ask(quick);
    EXPECT_TRUE(waitForWords("Checking for updates failed"));
    EXPECT_TRUE(waitForWords(each.words));
  }
  EXPECT_TRUE(told.empty());
}

TEST_F(UpdateFeedTest, AFailureOfAScheduledCheckDisturbsNobody) {
  server().set("feed.xml", {.status = 500});
  start(checkingAtOnce());
  ASSERT_TRUE(becomesTrue([&] { return server().requests("feed.xml") == 1; }));
  EXPECT_TRUE(staysTrue([&] { return !window() && told.empty(); }, 200ms));
}

TEST_F(UpdateFeedTest, ACheckThatTakesLongCanBeCancelled) {
  server().set("feed.xml", {.drips = true});
  ask(configuration());
  ASSERT_TRUE(waitForWords("Checking for updates"));
  ASSERT_TRUE(becomesTrue([&] { return server().requests("feed.xml") == 1; }));
  ASSERT_TRUE(becomesTrue(
      [&] { return desktop().windows().active() == static_cast<WindowId>(window()->winId()); }));
  desktop().input().tap(key::Escape);
  EXPECT_TRUE(becomesTrue([] { return !window(); }));
  EXPECT_TRUE(staysTrue([] { return !window(); }, 150ms));
}

TEST_F(UpdateFeedTest, AMovedFeedIsFollowed) {
  feed().offer("2.0", "package");
  server().set("old.xml", {.status = 301, .location = "/feed.xml"});
  ask(configuration(server().address("old.xml")));
  EXPECT_TRUE(waitForWords("2.0 is now available"));
}

TEST_F(UpdateFeedTest, AServerMustProveItsName) {
  const auto path = (desktop().home() / "here.pem").string();
  UpdateServer secure(makeCertificate(path));
  UpdateFeed secureFeed(secure);
  secureFeed.offer("2.0", "package");
  ask(configuration(secureFeed.address()));
  EXPECT_TRUE(waitForWords("could not be loaded"));
  EXPECT_EQ(secure.requests("feed.xml"), 0);

  qputenv("SSL_CERT_FILE", QByteArray::fromStdString(path));
  ask(configuration(secureFeed.address()));
  EXPECT_TRUE(waitForWords("2.0 is now available"));
  qunsetenv("SSL_CERT_FILE");
}

}  // namespace
}  // namespace zephyx
