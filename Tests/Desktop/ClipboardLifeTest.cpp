#include <filesystem>
#include <fstream>
#include <future>

#include "Tests/Desktop/ClipboardTest.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

class ClipboardLife : public ClipboardTest {
 protected:
  /// How often the clipboard's thread has gone to sleep; nothing when there is no such thread.
  static std::optional<long> sleepsOfThread() {
    for (const auto& task : std::filesystem::directory_iterator("/proc/self/task")) {
      if (readFile(task.path() / "comm") != "clipboard\n" ||
          task.path().filename() == std::to_string(getpid())) {
        continue;
      }
      std::ifstream status(task.path() / "status");
      for (std::string word; status >> word;) {
        long count = 0;
        if (word == "voluntary_ctxt_switches:" && status >> count) return count;
      }
    }
    return std::nullopt;
  }
  /// Of whoever has that selection.
  void breakConnection(const std::string& selection) {
    const auto owner = desktop_.windows().selectionOwner(selection);
    desktop_.run({"xkill", "-id", std::to_string(owner)});
  }
};

TEST_F(ClipboardLife, NothingWakesTheThreadWhileNothingHappens) {
  openAndObserve();
  ClipboardProgram program;
  program.copyText("x");
  ASSERT_TRUE(showsCopies(1));
  EXPECT_TRUE(showsNothingMoreFor(50ms));
  const auto before = sleepsOfThread();
  ASSERT_TRUE(before);
  EXPECT_TRUE(showsNothingMoreFor(500ms));
  EXPECT_EQ(sleepsOfThread(), before);
}

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

TEST_F(ClipboardLife, WithoutAServerThereIsAnEmptyPasteboard) {
  setenv("DISPLAY", ":nowhere", 1);
  LinuxPasteboard pasteboard(nullptr);
  EXPECT_FALSE(pasteboard.observeChanges({}, [] {}));
  EXPECT_TRUE(pasteboard.contents()->types().empty());
  EXPECT_EQ(pasteboard.clearContents(), 1);
  EXPECT_TRUE(pasteboard.writeString("ours"));
  EXPECT_FALSE(pasteboard.offerAsPrimary());
}

}  // namespace
}  // namespace zephyx
