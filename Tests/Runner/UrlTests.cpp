#include "Runner/Url.h"

#include <gtest/gtest.h>

#include <vector>

namespace zephyx {
namespace {

TEST(UrlTest, ParsesWhatObeysTheSyntax) {
  const std::tuple<const char*, const char*, const char*, const char*> cases[] = {
      {"https://example.org/a?b=c#d", "https://example.org/a?b=c#d", "https", "/a"},
      {"HTTPS://example.org", "HTTPS://example.org", "https", ""},
      {"file:///tmp/a%20b.txt", "file:///tmp/a%20b.txt", "file", "/tmp/a b.txt"},
      {"file:///tmp/ñ", "file:///tmp/%C3%B1", "file", "/tmp/ñ"},
      {"file://localhost/tmp/a", "file://localhost/tmp/a", "file", "/tmp/a"},
      {"mailto:a@b.org", "mailto:a@b.org", "mailto", "a@b.org"},
      {"relative/path", "relative/path", "", "relative/path"},
      {"http://[::1]:8080/a", "http://[::1]:8080/a", "http", "/a"},
  };
  for (const auto& [text, parsed, scheme, path] : cases) {
    const auto url = Url::parse(text);
    ASSERT_TRUE(url) << text;
    EXPECT_EQ(url->text, parsed);
    EXPECT_EQ(url->scheme, scheme);
    EXPECT_EQ(url->path, path);
  }
  for (const char* text : {"", "a b", "https://a.org/%zz", "https://a.org/%4", "https://a.org/\n",
                           "https://a.org/<>", "https://a.org/\""}) {
    EXPECT_FALSE(Url::parse(text)) << text;
  }
}

TEST(UrlTest, EncodesPathsSoThatTheyParseBackToThemselves) {
  for (const char* path : {"/tmp/plain-1.2_3~txt", "/tmp/a b", "/tmp/100%", "/tmp/#?;[]{}|\\^`\"<>",
                           "/tmp/ñandú/語", "/tmp/a:b@c&d=e+f,g!h$i'j(k)l*"}) {
    const auto url = Url::parse("file://" + percentEncodedPath(path));
    ASSERT_TRUE(url) << path;
    EXPECT_EQ(url->path, path);
    EXPECT_EQ(url->scheme, "file");
  }
  EXPECT_EQ(percentEncodedPath("/a b/ñ%"), "/a%20b/%C3%B1%25");
}

}  // namespace
}  // namespace zephyx
