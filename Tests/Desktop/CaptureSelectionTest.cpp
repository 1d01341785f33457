#include "Platform/Pasteboard.h"
#include "Runner/SelectionCapture.h"
#include "Tests/Desktop/CaptureTest.h"
#include "Tests/Desktop/ClipboardProgram.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;
using Kind = TargetProgram::Kind;

class CaptureSelectionTest : public CaptureTest {
 protected:
  /// A program of the user's copies this, and the history records it.
  void userCopies(ClipboardProgram::Formats formats) {
    const auto before = entries().size();
    if (!program_) program_.emplace();  // on the desktop that there is by now
    program_->copy(std::move(formats));
    ASSERT_TRUE(runUntil([&] { return entries().size() == before + 1; }));
  }
  void userCopiesText(const std::string& text) { userCopies({{"UTF8_STRING", text}}); }

 private:
  std::optional<ClipboardProgram> program_;
};

TEST_F(CaptureSelectionTest, FetchesTheSelectionOfEveryKindOfProgramAndPutsTheClipboardBack) {
  const auto file = "file://" + (desktop().home() / "a.txt").string();
  std::string picture(700'000, '\0');
  for (std::size_t i = 0; i < picture.size(); ++i) picture[i] = static_cast<char>(i * i / 7);
  const ClipboardProgram::Formats before{{"text/uri-list", file + "\r\n"},
                                         {"image/png", picture},
                                         {"text/html", "<b>bold</b>"},
                                         {"UTF8_STRING", "a.txt"}};
  writeFile(desktop().home() / "a.txt", "content");
  userCopies(before);
  const auto recorded = entries();
  for (const auto kind : {Kind::Gtk, Kind::Qt, Kind::Terminal}) {
    SCOPED_TRACE(TargetProgram::name(kind));
    const TargetProgram target(
        desktop(), kind, kind == Kind::Terminal ? "" : "text of " + TargetProgram::name(kind));
    auto expected = target.text();
    if (kind == Kind::Terminal) {
      expected = "selected";
      input().type(expected);
      ASSERT_TRUE(target.waitForText(expected));
      const int x = target.window().x + 30;
      const int y = target.window().y + 9;
      input().click(x, y);
      input().click(x, y);
      ASSERT_TRUE(runUntil([&] {
        return desktop().windows().selectionOwner("PRIMARY") != 0 &&
               desktop().pasted("UTF8_STRING", "primary") == expected;
      }));
    } else {
      input().chord({key::Control, key::A});
    }
    for (int round = 0; round < 2; ++round) {
      EXPECT_EQ(captured(), expected);
      for (const auto& [name, data] : before) EXPECT_TRUE(pasted(name) == data) << name;
    }
    if (kind == Kind::Terminal) {
      EXPECT_EQ(desktop().pasted("UTF8_STRING", "primary"), expected);
    }
  }
  EXPECT_TRUE(runsWithout([&] { return entries() != recorded; }, 600ms));
  userCopiesText("a copy of the user's own");
  EXPECT_EQ(entries().back(), "a copy of the user's own");
}

TEST_F(CaptureSelectionTest, WaitsForASlowProgramButNotForAVerySlowOne) {
  userCopiesText("before");
  {
    const TargetProgram slow(desktop(), "slow text", 200ms);
    EXPECT_EQ(captured(), "slow text");
    EXPECT_EQ(pasted(), "before");
  }
  {
    const TargetProgram deaf(desktop(), "never copied", -1ms);
    EXPECT_EQ(captured(), "before") << "what is on the clipboard";
    EXPECT_EQ(pasted(), "before");
  }
  EXPECT_EQ(entries(), (std::vector<std::string>{"before"}));
  const TargetProgram late(desktop(), "late text", 600ms);
  EXPECT_EQ(captured(), "before");
  EXPECT_TRUE(runUntil([&] { return entries().back() == "late text"; })) << "a copy like any other";
  EXPECT_EQ(pasted(), "late text");
}

TEST_F(CaptureSelectionTest, ATerminalWithoutASelectionGivesWhatIsOnTheClipboard) {
  userCopiesText("before");
  // The selection of another program is not the terminal's.
  desktop().run({"xclip", "-selection", "primary"}, "selected elsewhere");
  const TargetProgram terminal(desktop(), Kind::Terminal);
  EXPECT_EQ(captured(), "before");
  input().type("alive");
  EXPECT_TRUE(terminal.waitForText("alive"));
  EXPECT_EQ(desktop().pasted("UTF8_STRING", "primary"), "selected elsewhere");
}

TEST_F(CaptureSelectionTest, AHungClipboardDoesNotKillTheHotkey) {
  const TargetProgram target(desktop(), Kind::Qt, "selected");
  ClipboardProgram hung;
  hung.setManners({.answersTargets = false});
  const auto count = platform().pasteboard().changeCount();
  hung.copyText("never said");
  ASSERT_TRUE(runUntil([&] { return platform().pasteboard().changeCount() > count; }));
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(captured(), "selected");
  EXPECT_LT(std::chrono::steady_clock::now() - begin, 1500ms * patience());
}

}  // namespace
}  // namespace zephyx
