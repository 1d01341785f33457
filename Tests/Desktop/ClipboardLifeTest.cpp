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
  EXPECT_LT(Clock::now() - before, 500ms);
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

TEST_F(ClipboardLife, AnEndedObservationIsNotCalledAndMayEndInItsOwnHandler) {
  auto& pasteboard = open();
  ClipboardProgram program;
  int calls = 0;
  Registration observation;
  observation = pasteboard.observeChanges({}, [&] {
    ++calls;
    observation.reset();
  });
  program.copyText("one");
  program.copyText("two");
  ASSERT_TRUE(runUntil([&] { return pasteboard.changeCount() == 2; }));
  EXPECT_EQ(calls, 1);
  pasteboard_.reset();
}

TEST_F(ClipboardLife, TheEndOfTheConnectionEndsTheThread) {
  auto& pasteboard = openAndObserve();
  const auto before = pasteboard.contents();
  pasteboard.clearContents();
  pasteboard.writeString("ours");
  ASSERT_TRUE(pasteboard.offerAsPrimary());
  X11Connection other;
  const XReply<xcb_get_selection_owner_reply_t> owner(xcb_get_selection_owner_reply(
      other.get(), xcb_get_selection_owner(other.get(), XCB_ATOM_PRIMARY), nullptr));
  ASSERT_TRUE(owner && sleepsOfThread());
  xcb_kill_client(other.get(), owner->owner);
  xcb_flush(other.get());
  EXPECT_TRUE(runUntil([] { return !sleepsOfThread(); }));
  EXPECT_TRUE(before->types().empty());
  pasteboard.clearContents();
  EXPECT_FALSE(pasteboard.offerAsPrimary());
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
