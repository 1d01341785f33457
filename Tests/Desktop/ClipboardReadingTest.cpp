#include <algorithm>
#include <thread>

#include "Tests/Desktop/ClipboardTest.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;
using Types = std::vector<std::string>;

struct Copied {
  const char* name;
  ClipboardProgram::Formats formats;
  Types types;
  const char* type;
  const char* text;
};

std::vector<Copied> copies() {
  using namespace pasteboardType;
  const auto wide = [](const char* text, std::size_t size) { return std::string(text, size); };
  const std::string html = "text/html", uris = "text/uri-list", link = "text/x-moz-url";
  const std::string utf8 = "UTF8_STRING", latin1 = "STRING";
  return {
      {"Text", {{latin1, "?"}, {utf8, "grüß"}, {html, "<b>"}}, {string, html}, string, "grüß"},
      {"Latin1", {{latin1, "gr\xFC\xDF"}}, {string}, string, "grüß"},
      {"SecondTargetWhenTheFirstIsRefused",
       {{utf8, "refused"}, {"text/plain;charset=UTF-8", "b"}},
       {string},
       string,
       "b"},
      {"TextWhenTheImageIsRefused",
       {{"image/png", "refused"}, {utf8, "b"}},
       {png, string},
       string,
       "b"},
      {"MalformedText", {{utf8, "a\xFF\xC3z"}}, {string}, string, "a\uFFFD\uFFFDz"},
      {"File",
       {{utf8, "/a b"}, {uris, "#\r\nfile:///a%20b\r\nfile:///c"}},
       {string, fileUrl},
       fileUrl,
       "file:///a%20b"},
      {"FileOfAFileManager",
       {{"x-special/gnome-copied-files", "cut\nfile://localhost/a"}},
       {fileUrl},
       fileUrl,
       "file:///a"},
      {"Link",
       {{uris, "https://a.example/\r\n"}, {utf8, "a"}},
       {url, string},
       url,
       "https://a.example/"},
      {"LinkOfABrowser",
       {{link, wide("h\0:\0/\0x\0\n\0T\0", 12)}, {utf8, "h:/x"}},
       {url, string},
       url,
       "h:/x"},
      {"PlainTextInAnOldCharacterSet", {{"text/plain", wide("\xFC\0", 2)}}, {string}, string, "ü"},
      {"LinkWithSurrogatesAndAMark",
       {{link, wide("\xFE\xFF\0h\0:\xD8\x3D\xDE\x00\xD8\x3D", 12)}},
       {url},
       url,
       "h:\U0001F600\uFFFD"},
      {"FileOfAnotherMachine", {{uris, "file://server/a"}}, {url}, url, "file://server/a"},
      {"EmptyUriList", {{uris, "\r\n"}, {utf8, "a"}}, {string}, string, "a"},
      {"Png",
       {{"image/jpeg", "J"}, {"image/png", "P"}, {utf8, "a"}},
       {png, string, "image/jpeg"},
       png,
       "P"},
      {"AnyBitmap", {{"image/gif", "G"}, {"image/jpeg", "J"}}, {tiff, "image/gif"}, tiff, "J"},
      {"NotOffered", {{html, "<b>"}}, {html}, string, "nothing"},
  };
}

class ClipboardReading : public ClipboardTest {};

TEST_F(ClipboardReading, FormatsAreShownAsPasteboardTypes) {
  openAndObserve();
  ClipboardProgram program;
  for (const auto& each : copies()) {
    SCOPED_TRACE(each.name);
    shown_.clear();
    program.copy(each.formats);
    ASSERT_TRUE(showsCopies(1));
    EXPECT_EQ(shown_[0].contents->types(), each.types);
    EXPECT_EQ(shown_[0].contents->string(each.type).value_or("nothing"), each.text);
  }
}

TEST_F(ClipboardReading, HiddenCopiesAreNotLookedAt) {
  openAndObserve();
  ClipboardProgram program;
  for (const char* mark : {"x-kde-passwordManagerHint", "text/x-KDE-PasswordManagerHint",
                           "org.nspasteboard.TransientType"}) {
    program.copy({{"UTF8_STRING", "s"}, {"text/uri-list", "file:///s"}, {mark, "secret"}});
    ASSERT_TRUE(showsCopies(shown_.size() + 1));
  }
  program.copyText("open");
  ASSERT_TRUE(showsCopies(4));
  const auto types = shown_[0].contents->types();
  EXPECT_EQ(std::count(types.begin(), types.end(), "org.nspasteboard.ConcealedType"), 1);
  const auto requests = program.requests();
  EXPECT_EQ(requests.size(), 5u) << "four lists of targets and one text";
  EXPECT_EQ(std::count(requests.begin(), requests.end(), "UTF8_STRING"), 1);
  EXPECT_EQ(shown_[3].text(), "open");
}

TEST_F(ClipboardReading, OnlyThePreferredOfManyFormatsIsFetched) {
  openAndObserve();
  ClipboardProgram program;
  ClipboardProgram::Formats formats;
  for (const auto& name : numberedTexts("application/x-format-", 300))
    formats.push_back({name, "x"});
  formats.push_back({"image/png", "P"});
  formats.push_back({"UTF8_STRING", "text"});
  program.copy(formats);
  ASSERT_TRUE(showsCopies(1));
  EXPECT_EQ(shown_[0].contents->types().size(), 302u);
  EXPECT_EQ(program.requests(), (Types{"TARGETS", "image/png"}));
  EXPECT_EQ(shown_[0].text(), "text") << "fetched on demand";
}

TEST_F(ClipboardReading, CopiesTooFastToReadAreMissedButNeverMixedUp) {
  openAndObserve();
  const int count = 400;
  ClipboardProgram one, other;
  std::thread helper([&] { one.copyTexts(numberedTexts("a", count), 20us); });
  other.copyTexts(numberedTexts("b", count), 20us);
  helper.join();
  ASSERT_TRUE(showsCopies(2 * count));

  std::size_t read = 0;
  int last[2] = {-1, -1};
  for (const auto& shown : shown_) {
    const auto text = shown.text();
    if (text.empty()) continue;
    ++read;
    auto& lastOfProgram = last[text[0] == 'a' ? 0 : 1];
    const int number = std::stoi(text.substr(1));
    EXPECT_GT(number, lastOfProgram) << "a copy was shown with the text of another one";
    lastOfProgram = number;
  }
  EXPECT_GE(read, 1u);
  EXPECT_EQ(std::max(last[0], last[1]), count - 1) << "the last copy stays readable";
}

TEST_F(ClipboardReading, AnAnswerGivenAfterTheNextCopyOfTheSameProgramIsNotTrusted) {
  openAndObserve();
  ClipboardProgram program;
  program.setManners({.holdsData = true});
  program.copyText("first");
  ASSERT_TRUE(runUntil([&] { return program.requests().size() == 2; }));
  program.setManners({});
  program.copyText("second");
  program.answerHeld();
  ASSERT_TRUE(showsCopies(2));
  EXPECT_EQ(shown_[0].text(), "");
  EXPECT_EQ(shown_[1].text(), "second");
}

TEST_F(ClipboardReading, AnAnswerGivenAfterTheCopyOfAnotherProgramCounts) {
  openAndObserve();
  ClipboardProgram slow, fast;
  slow.setManners({.holdsData = true});
  slow.copyText("first");
  ASSERT_TRUE(runUntil([&] { return slow.requests().size() == 2; }));
  fast.copyText("second");
  ASSERT_TRUE(runUntil([&] { return fast.requests().size() == 2; }));
  slow.answerHeld();
  ASSERT_TRUE(showsCopies(2));
  EXPECT_EQ(shown_[0].text(), "first");
  EXPECT_EQ(shown_[1].text(), "second");
}

class ClipboardHungPrograms : public ClipboardTest,
                              public testing::WithParamInterface<ClipboardProgram::Manners> {};

TEST_P(ClipboardHungPrograms, HoldTheNextCopyBackForAMomentOnly) {
  openAndObserve();
  ClipboardProgram hung, program;
  hung.setManners(GetParam());
  hung.copyText("never said");
  ASSERT_TRUE(runUntil([&] { return !hung.requests().empty(); }));
  const auto copied = program.copyText("next");
  ASSERT_TRUE(showsCopies(2));
  EXPECT_LT(shown_[1].moment - copied, 400ms * patience());
  EXPECT_EQ(shown_[0].text(), "");
  EXPECT_EQ(shown_[1].text(), "next");
}

INSTANTIATE_TEST_SUITE_P(Clipboard, ClipboardHungPrograms,
                         testing::Values(ClipboardProgram::Manners{.answersTargets = false},
                                         ClipboardProgram::Manners{.answersData = false}),
                         [](const auto& test) {
                           return test.param.answersTargets ? "AnswersTargetsOnly" : "NeverAnswers";
                         });

TEST_F(ClipboardReading, LargeDataArriveWholeInPiecesOfAnySize) {
  openAndObserve();
  ClipboardProgram program;
  struct Sent {
    std::size_t size;
    std::size_t piece;
  };
  for (const auto [size, piece] :
       {Sent{twentyMegabytes, 64u << 10}, Sent{twentyMegabytes, 15u << 20},
        Sent{15'000'001, 15'000'001}}) {
    const auto data = longText(size);
    program.setManners({.piece = piece});
    program.copy({{"image/png", data}});
    ASSERT_TRUE(showsCopies(1));
    const auto read = shown_[0].contents->data(pasteboardType::png).value_or(Bytes{});
    EXPECT_TRUE(std::string(read.begin(), read.end()) == data) << "pieces of " << piece;
    shown_.clear();
  }
}

TEST_F(ClipboardReading, DataWithoutAnEndAreDroppedAndTheNextFormatIsTaken) {
  openAndObserve();
  ClipboardProgram program;
  program.setManners({.neverEnds = true, .piece = 4u << 20});
  program.copy({{"image/png", longText(4u << 20)}});
  ASSERT_TRUE(showsCopies(1));
  EXPECT_FALSE(shown_[0].contents->data(pasteboardType::png));
  program.setManners({});
  program.copyText("modest");
  ASSERT_TRUE(showsCopies(2));
  EXPECT_EQ(shown_[1].text(), "modest");
}

TEST_F(ClipboardReading, AListOfTargetsThatIsNoneOffersNothing) {
  openAndObserve();
  ClipboardProgram program;
  program.setManners({.targetsFormat = 8});
  program.copyText("x");
  ASSERT_TRUE(showsCopies(1));
  EXPECT_TRUE(shown_[0].contents->types().empty());
  program.setManners({});
  ClipboardProgram::Formats formats;
  for (const auto& name : numberedTexts("t", 20'000)) formats.push_back({name, ""});
  program.copy(formats);
  ASSERT_TRUE(showsCopies(2));
  EXPECT_TRUE(shown_[1].contents->types().empty());
  program.copy({{std::string(5'000, 'n'), "no format has such a name"}, {"UTF8_STRING", "x"}});
  ASSERT_TRUE(showsCopies(3));
  EXPECT_EQ(shown_[2].contents->types(), std::vector<std::string>{pasteboardType::string});
}

TEST_F(ClipboardReading, WhatWasThereBeforeIsNotAnnouncedButCanBeRead) {
  ClipboardProgram program;
  program.copy({{"text/uri-list", "file:///old"}, {"UTF8_STRING", "old"}});
  auto& pasteboard = openAndObserve();
  EXPECT_TRUE(showsNothingMoreFor(50ms));
  EXPECT_TRUE(program.requests().empty());
  const auto contents = pasteboard.contents();
  EXPECT_EQ(contents->types(), (Types{pasteboardType::fileUrl, pasteboardType::string}));
  EXPECT_EQ(contents->string(pasteboardType::string), "old");
  program.copyText("new");
  ASSERT_TRUE(showsCopies(1));
  EXPECT_FALSE(contents->string(pasteboardType::string)) << "the owner has something else by now";
}

TEST_F(ClipboardReading, WhenTheOwnerQuitsNothingWasCopied) {
  openAndObserve();
  {
    ClipboardProgram program;
    program.copy({{"UTF8_STRING", "fetched"}, {"text/html", "<b>"}});
    ASSERT_TRUE(showsCopies(1));
  }
  EXPECT_TRUE(showsNothingMoreFor(50ms));
  EXPECT_EQ(shown_[0].text(), "fetched");
  EXPECT_FALSE(shown_[0].contents->data("text/html"));
}

}  // namespace
}  // namespace zephyx
