#include <cstring>
#include <map>

#include "Platform/Image.h"
#include "Tests/Desktop/ClipboardTest.h"
#include "Tests/Desktop/PastingProgram.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;
using Types = std::vector<std::string>;

class EncodedImage final : public Image {
 public:
  Size size() const override { return {}; }
  PixelSize pixelSize() const override { return {}; }
  std::shared_ptr<Image> drawnAtSize(Size) const override { return nullptr; }
  Bytes pngRepresentation() const override { return {0x89, 'P', 'N', 'G', 0}; }
};

class ClipboardWriting : public ClipboardTest {
 protected:
  std::string pasted(const std::string& target) {
    return during([this, target] { return desktop_.pasted(target); });
  }
  /// Other programs see what was written.
  void waitForOffer(const std::string& target) {
    ASSERT_TRUE(runUntil([&] { return pasted("TARGETS").find(target) != std::string::npos; }));
  }
};

TEST_F(ClipboardWriting, OtherProgramsReadEveryFormat) {
  auto& pasteboard = open();
  struct Written {
    std::function<bool()> write;
    std::map<std::string, std::string> read;
    Types types;
  };
  const Written cases[] = {
      {[&] { return pasteboard.writeString("gr\xC3\xBC\xC3\x9F \xE2\x82\xAC"); },
       {{"UTF8_STRING", "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC"},
        {"text/plain;charset=utf-8", "gr\xC3\xBC\xC3\x9F \xE2\x82\xAC"},
        {"STRING", "gr\xFC\xDF ?"}},
       {pasteboardType::string}},
      {[&] { return pasteboard.writeUrl("file:///a%20b"); },
       {{"text/uri-list", "file:///a%20b\r\n"},
        {"x-special/gnome-copied-files", "copy\nfile:///a%20b"},
        {"UTF8_STRING", "/a b"}},
       {pasteboardType::fileUrl, pasteboardType::string}},
      {[&] { return pasteboard.writeString("A") && pasteboard.writeUrl("h:x"); },
       {{"text/uri-list", "h:x\r\n"},
        {"text/x-moz-url", std::string("h\0:\0x\0\n\0h\0:\0x\0", 14)},
        {"UTF8_STRING", "A"}},
       {pasteboardType::url, pasteboardType::string}},
      {[&] { return pasteboard.writeImage(EncodedImage()); },
       {{"image/png", std::string("\x89PNG\0", 5)}},
       {pasteboardType::png}},
  };
  for (const auto& written : cases) {
    pasteboard.clearContents();
    ASSERT_TRUE(written.write());
    EXPECT_EQ(pasteboard.contents()->types(), written.types);
    waitForOffer(written.read.begin()->first);
    for (const auto& [target, data] : written.read) EXPECT_EQ(pasted(target), data) << target;
  }
  EXPECT_FALSE(pasteboard.writeUrl("h:x\nfile:///etc/passwd"));
}

TEST_F(ClipboardWriting, ATransferOutlivesItsReaderAndItsContents) {
  auto& pasteboard = open();
  const auto text = longText(twentyMegabytes);
  pasteboard.clearContents();
  pasteboard.writeString(text);
  waitForOffer("UTF8_STRING");
  PastingProgram slow;
  ASSERT_TRUE(slow.ask("UTF8_STRING", "SLOW"));
  {
    PastingProgram dying;
    ASSERT_TRUE(dying.ask("UTF8_STRING", "DYING"));
    EXPECT_EQ(dying.take("DYING").type, "INCR");
  }
  pasteboard.clearContents();
  pasteboard.writeImage(EncodedImage());
  waitForOffer("image/png");
  ClipboardProgram program;
  program.copyText("newer still");
  EXPECT_EQ(slow.take("SLOW").type, "INCR");
  EXPECT_TRUE(slow.takePieces("SLOW").data == text);
  EXPECT_FALSE(pasteboard.contents()->types().empty());
}

TEST_F(ClipboardWriting, SeveralFormatsAreGivenInOneQuestion) {
  auto& pasteboard = open();
  pasteboard.clearContents();
  pasteboard.writeString("text");
  waitForOffer("UTF8_STRING");
  PastingProgram program;
  auto& connection = program.connection();
  program.put("PAIRS",
              {connection.atom("UTF8_STRING"), connection.atom("A"), connection.atom("image/png"),
               connection.atom("B"), connection.atom("TIMESTAMP"), connection.atom("C")});
  ASSERT_TRUE(program.ask("MULTIPLE", "PAIRS"));
  std::vector<xcb_atom_t> pairs(6);
  const auto answered = program.take("PAIRS");
  ASSERT_EQ(answered.data.size(), 24u);
  std::memcpy(pairs.data(), answered.data.data(), 24);
  EXPECT_EQ(program.take("A").data, "text");
  EXPECT_EQ(pairs[1], connection.atom("A"));
  EXPECT_EQ(pairs[3], xcb_atom_t{XCB_NONE}) << "what is not offered is marked";
  EXPECT_EQ(program.take("C").data.size(), 4u);
  EXPECT_FALSE(program.ask("image/png", "D"));
}

TEST_F(ClipboardWriting, ACopyThatCameBeforeAnOwnWriteIsShownButDoesNotReplaceIt) {
  auto& pasteboard = openAndObserve();
  ClipboardProgram program;
  program.copyText("theirs");
  // The main loop has not run: the copy is announced after this write, but is older.
  ASSERT_TRUE(waitFor([&] { return program.requests().size() == 2; }));
  pasteboard.clearContents();
  pasteboard.writeString("ours");
  ASSERT_TRUE(showsCopies(1));
  EXPECT_EQ(shown_[0].text(), "theirs");
  EXPECT_EQ(pasteboard.contents()->string(pasteboardType::string), "ours");
  waitForOffer("UTF8_STRING");
  EXPECT_EQ(pasted("UTF8_STRING"), "ours");
  program.copyText("newer");
  ASSERT_TRUE(showsCopies(2));
  EXPECT_FALSE(pasteboard.writeString("too late"));
  EXPECT_FALSE(pasteboard.offerAsPrimary());
}

TEST_F(ClipboardWriting, OtherProgramsSeeAllWritesOfOneTurnOrNone) {
  auto& watching = openAndObserve();
  LinuxPasteboard writing(nullptr);
  writing.clearContents();
  writing.writeString("A");
  writing.writeUrl("h:x");
  ASSERT_TRUE(showsCopies(1));
  EXPECT_EQ(shown_[0].contents->types(),
            (Types{pasteboardType::url, pasteboardType::string, "TEXT"}));
  EXPECT_TRUE(showsNothingMoreFor(50ms));
  EXPECT_EQ(watching.changeCount(), 1);
}

}  // namespace
}  // namespace zephyx
