#include "Platform/Linux/Updates/Appcast.h"

#include <gtest/gtest.h>

#include "Platform/Linux/Updates/ReleaseNotes.h"
#include "Platform/Linux/Updates/UpdateChoice.h"
#include "Platform/Linux/Updates/UpdateConfiguration.h"
#include "Platform/Linux/Updates/VersionOrder.h"

namespace zephyx {
namespace {

const QUrl feedAddress(QStringLiteral("https://updates.example/feed.xml"));

UpdateConfiguration configuration() {
  UpdateConfiguration result;
  result.feed = feedAddress;
  result.publicKey = QByteArray(32, 'k');
  result.version = QStringLiteral("100");
  result.displayVersion = QStringLiteral("1.0");
  result.systems = {QStringLiteral("linux"), QStringLiteral("linux-x86_64")};
  result.systemVersion = QStringLiteral("12");
  return result;
}

QByteArray feed(const QByteArray& items) {
  return R"(<?xml version="1.0"?><rss version="2.0" )"
         R"(xmlns:sparkle="http://www.andymatuschak.org/xml-namespaces/sparkle"><channel>)" +
         items + "</channel></rss>";
}

/// An enclosure without defects, with these attributes besides.
QByteArray enclosure(const QByteArray& attributes = R"(sparkle:os="linux")",
                     const QByteArray& url = "https://updates.example/zephyx.deb") {
  return "<enclosure url=\"" + url + R"(" length="4000" sparkle:edSignature=")" +
         QByteArray(64, 's').toBase64() + "\" " + attributes + "/>";
}

QByteArray element(const QByteArray& name, const QByteArray& contents) {
  return "<sparkle:" + name + ">" + contents + "</sparkle:" + name + ">";
}

QByteArray item(const QByteArray& version, const QByteArray& rest = enclosure()) {
  return "<item>" + element("version", version) + rest + "</item>";
}

/// What becomes of a feed, in one line.
std::string outcome(const QByteArray& bytes) {
  const auto refused = [](const auto& result) {
    const auto* refusal = std::get_if<UpdateRefusal>(&result);
    return refusal ? "refused: " + refusal->text.toStdString() : "";
  };
  const auto items = readAppcast(bytes, feedAddress);
  if (const auto words = refused(items); !words.empty()) return words;
  const auto choice = chooseUpdate(std::get<std::vector<AppcastItem>>(items), configuration());
  if (const auto words = refused(choice); !words.empty()) return words;
  if (const auto* found = std::get_if<AppcastItem>(&choice)) {
    return "found " + found->displayVersion.toStdString();
  }
  const auto newest = std::get<NoUpdate>(choice).newest.toStdString();
  return newest.empty() ? "none" : "none, only " + newest;
}

TEST(AppcastTest, TheNewestReleaseForThisSystemIsChosen) {
  const std::pair<QByteArray, const char*> cases[] = {
      {"", "none"},
      {item("101"), "found 101"},
      {item("101") + item("103") + item("102"), "found 103"},
      {item("9") + item("99"), "none, only 99"},
      {item("100") + item("99"), "none"},
      {item("101", enclosure(R"(sparkle:os="linux-x86_64")")), "found 101"},
      {item("101", enclosure(R"(sparkle:os="linux-arm64")")), "none"},
      {item("101", enclosure(R"(sparkle:os="windows")")), "none"},
      {item("101", enclosure("")), "none"},
      {item("101", element("channel", "beta") + enclosure()), "none"},
      {item("101", element("minimumSystemVersion", "12.4") + enclosure()) + item("100.5"),
       "found 100.5"},
      {item("101", element("shortVersionString", "2.0 “B”") + enclosure()), "found 2.0 “B”"},
      {"<item>" +
           enclosure(
               R"(sparkle:os="linux" sparkle:version="101" sparkle:shortVersionString="2.0")") +
           "</item>",
       "found 2.0"},
      {item("101", element("deltas", R"(<enclosure sparkle:os="linux" url="https://x/"/>)")),
       "none"},
      {item("not a version") + item("101"), "found 101"},
  };
  for (const auto& [items, expected] : cases)
    EXPECT_EQ(outcome(feed(items)), expected) << items.toStdString();
}

TEST(AppcastTest, AReleaseThatCannotBeTrustedIsRefusedInWords) {
  const auto unsignedEnclosure = [](const QByteArray& attributes) {
    return R"(<enclosure url="https://updates.example/z.deb" sparkle:os="linux" )" + attributes +
           "/>";
  };
  const auto signature = "sparkle:edSignature=\"" + QByteArray(64, 's').toBase64() + "\" ";
  const std::pair<QByteArray, const char*> cases[] = {
      {item("101", unsignedEnclosure(R"(length="4000")")), "it is not signed"},
      {item("101", unsignedEnclosure(R"(length="4000" sparkle:edSignature="c2hvcnQ=")")),
       "it is not signed"},
      {item("101") + item("102", unsignedEnclosure(R"(length="4000")")), "102 cannot"},
      {item("101", unsignedEnclosure(signature)), "how large it is"},
      {item("101", unsignedEnclosure(signature + R"(length="-1")")), "how large it is"},
      {item("101", unsignedEnclosure(signature + R"(length="9000000000")")), "is too large"},
      {item("101", enclosure(R"(sparkle:os="linux")", "http://updates.example/z.deb")),
       "secure connection"},
      {item("101", enclosure(R"(sparkle:os="linux")", "file:///etc/passwd")), "where it is"},
      {item("101", enclosure(R"(sparkle:os="linux")", "http://localhost/z.deb")),
       "secure connection"},
      {item("10 1"), "names no version"},
      {item(QByteArray(5'000, '9')), "names no version"},
      {item("101", element("minimumSystemVersion", "13") + enclosure()), "needs version 13"},
  };
  for (const auto& [items, words] : cases) {
    const auto result = outcome(feed(items));
    EXPECT_EQ(result.substr(0, 8), "refused:") << items.left(300).toStdString();
    EXPECT_NE(result.find(words), std::string::npos) << result;
  }
}

TEST(AppcastTest, WhatIsNoFeedIsRefused) {
  QByteArray bomb = R"(<!DOCTYPE rss [<!ENTITY a "aaaaaaaaaa">)";
  for (char entity = 'b'; entity <= 'j'; ++entity) {
    const QByteArray inner = QByteArray("&") + static_cast<char>(entity - 1) + ";";
    bomb += QByteArray("<!ENTITY ") + entity + " \"" + inner.repeated(10) + "\">";
  }
  bomb += "]><rss><channel><item><title>&j;</title></item></channel></rss>";
  const QByteArray cases[] = {
      "",
      "not XML",
      "<html><body>Sign in to this network</body></html>",
      "<rss><channel>",
      feed(item("101")).chopped(20),
      "<rss><channel><item><sparkle:version>9</sparkle:version></item></channel></rss>",
      bomb,
      R"(<!DOCTYPE rss SYSTEM "file:///etc/passwd"><rss/>)",
      feed("&undeclared;"),
      feed(QByteArray("<a>").repeated(40) + QByteArray("</a>").repeated(40)),
      feed(QByteArray("<item/>").repeated(2'000)),
      feed("<item><description>" + QByteArray(10'000'000, 'x') + "</description></item>"),
      QByteArray("\xff\xfe\x00<", 4),
  };
  for (const auto& each : cases)
    EXPECT_EQ(outcome(each).substr(0, 8), "refused:") << each.left(200).toStdString();
}

TEST(AppcastTest, ConfigurationsWithoutASecureFeedOrAKeyAllowNoUpdates) {
  EXPECT_FALSE(configuration().unavailableReason());
  for (const char* feed : {"", "http://updates.example/feed.xml", "file:///tmp/feed", "feed.xml",
                           "https:///feed", "ftp://127.0.0.1/feed"}) {
    auto broken = configuration();
    broken.feed = QUrl(QLatin1String(feed));
    EXPECT_TRUE(broken.unavailableReason()) << feed;
  }
  auto keyless = configuration();
  keyless.publicKey = QByteArray(31, 'k');
  EXPECT_TRUE(keyless.unavailableReason());
}

TEST(VersionOrderTest, PiecesAreComparedByTheirKind) {
  const std::pair<const char*, const char*> cases[] = {
      {"1.0", "1.1"},      {"1.9", "1.10"},
      {"9", "10"},         {"1.0b2", "1.0"},
      {"1.0b2", "1.0b10"}, {"1.0a", "1.0b"},
      {"1.0", "1.0.1"},    {"2.0-beta", "2.0"},
      {"007", "8"},        {"99999999999999999998", "99999999999999999999"}};
  const auto compared = [](const char* a, const char* b) {
    return compareVersions(QString(QLatin1String(a)), QString(QLatin1String(b)));
  };
  for (const auto& [older, newer] : cases) {
    EXPECT_EQ(compared(older, newer), std::strong_ordering::less) << newer;
    EXPECT_EQ(compared(newer, older), std::strong_ordering::greater) << newer;
  }
  for (const auto& [a, b] :
       {std::pair("1.0", "1.0.0"), {"1.01", "1.1"}, {"1-2", "1.2"}, {"3", "3"}}) {
    EXPECT_EQ(compared(a, b), std::strong_ordering::equal) << a;
  }
}

TEST(ReleaseNotesTest, NothingButPlainMarkupIsLeft) {
  const std::pair<const char*, const char*> cases[] = {
      {"<p class='x'>New: <b onclick=\"evil()\">fast</b></p>", "<p>New: <b>fast</b></p>"},
      {"a<img src=\"https://x/track.png\">b", "ab"},
      {"a<script>alert(1)</script>b<STYLE>p{}</style>c", "abc"},
      {"a<script>never ends", "a"},
      {"<!-- hidden -->shown", "shown"},
      {"<table><tr><td>cell</td></tr></table>", "cell"},
      {"<a href=\"https://x.example/?a=1&b=2\">more</a>",
       "<a href=\"https://x.example/?a=1&amp;b=2\">more</a>"},
      {"<a href='javascript:evil()'>more</a>", "<a href=\"\">more</a>"},
      {"1 < 2 &lt; 3", "1 &lt; 2 &lt; 3"},
      {"<<b>script>", "&lt;<b>script>"},
  };
  for (const auto& [html, left] : cases)
    EXPECT_EQ(limitedRichText(QString::fromUtf8(html)).toStdString(), left);
}

}  // namespace
}  // namespace zephyx
