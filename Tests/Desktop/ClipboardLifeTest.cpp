#include <future>

#include "Tests/Desktop/ClipboardTest.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

class ClipboardLife : public ClipboardTest {
 protected:
  /// Of whoever has that selection.
  void breakConnection(const std::string& selection) {
    const auto owner = desktop_.windows().selectionOwner(selection);
    desktop_.run({"xkill", "-id", std::to_string(owner)});
  }
};

TEST_F(ClipboardLife, ThoseWhoWaitForAHungOwnerAreReleasedAtTheEnd) {
  ClipboardProgram program;
  program.setManners({.answersData = false});
  program.copyText("never said");
  const auto contents = open().contents();
  auto read = std::async(std::launch::async,
                         [contents] { return contents->string(pasteboardType::string); });
  ASSERT_TRUE(runUntil([&] { return program.requests().size() == 2; }));
  const auto before = Clock::now();
  pasteboard_.reset();
  EXPECT_FALSE(read.get());
  EXPECT_LT(Clock::now() - before, 500ms * patience());
  EXPECT_FALSE(contents->data(pasteboardType::string)) << "nobody is left to ask";
}

TEST_F(ClipboardLife, EndsWhileTheThreadIsBeingWokenForSomethingElse) {
  for (int i = 0; i < 500; ++i) {
    open();
    // Its copies, and the end of its connection, wake the thread while it is told to stop.
    auto program = std::make_unique<ClipboardProgram>();
    program->copyTexts(numberedTexts("x", 20), 0us);
    program.reset();
    pasteboard_.reset();
  }
}

TEST_F(ClipboardLife, ABrokenConnectionIsMadeAnewAndTheClipboardIsAsItWas) {
  auto& pasteboard = openAndObserve();
  ClipboardProgram program;
  for (std::size_t copies = 1; copies <= 3; ++copies) {
    program.copyText("theirs " + std::to_string(copies));
    ASSERT_TRUE(showsCopies(copies));
    EXPECT_EQ(shown_.back().text(), "theirs " + std::to_string(copies));
    pasteboard.clearContents();
    pasteboard.writeString("ours");
    ASSERT_TRUE(pasteboard.offerAsPrimary());
    breakConnection("CLIPBOARD");
    EXPECT_TRUE(runUntil([&] { return desktop_.pasted() == "ours"; }));
  }
  EXPECT_TRUE(showsNothingMoreFor(50ms));
}

TEST_F(ClipboardLife, ABrokenConnectionLeavesNoQuestionUnanswered) {
  auto& pasteboard = openAndObserve();
  pasteboard.clearContents();
  pasteboard.writeString("ours");
  ASSERT_TRUE(pasteboard.offerAsPrimary());
  ClipboardProgram program;
  program.setManners({.answersTargets = false});
  program.copyText("never said");
  ASSERT_TRUE(runUntil([&] { return !program.requests().empty(); }));
  std::shared_ptr<const PasteboardItems> items;
  pasteboard.copyItems([&](std::shared_ptr<const PasteboardItems> answer) { items = answer; });
  breakConnection("PRIMARY");
  EXPECT_TRUE(runUntil([&] { return items != nullptr; }, 500ms));
}

}  // namespace
}  // namespace zephyx
