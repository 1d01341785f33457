#include "Tests/Desktop/ClipboardTest.h"
#include "Tests/Desktop/PastingProgram.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

class ClipboardSaving : public ClipboardTest {
 protected:
  std::shared_ptr<const PasteboardItems> save() {
    std::shared_ptr<const PasteboardItems> saved;
    const auto begin = Clock::now();
    pasteboard_->copyItems([&](std::shared_ptr<const PasteboardItems> items) {
      saved = std::move(items);
      savingTook_ = Clock::now() - begin;
    });
    EXPECT_TRUE(runUntil([&] { return saved != nullptr; }));
    return saved;
  }
  void putBack(const PasteboardItems& items) {
    pasteboard_->clearContents();
    if (!items.isEmpty()) {
      EXPECT_TRUE(pasteboard_->writeItems(items));
    }
    EXPECT_TRUE(pasteboard_->waitUntilOffered());
  }
  /// What another program pastes, while this one runs.
  PastingProgram::Property pasted(const std::string& target) {
    return during([target] { return PastingProgram().paste(target); });
  }
  bool isOwnerless() { return desktop_.windows().selectionOwner("CLIPBOARD") == 0; }

  Clock::duration savingTook_{};
};

TEST_F(ClipboardSaving, EveryTargetComesBackWithItsTypeItsFormatAndItsBytes) {
  openAndObserve();
  ClipboardProgram program;
  const std::string numbers("\x01\0\0\0\xFF\0\0\x80", 8);
  program.setManners({.types = {{"TEXT", "UTF8_STRING"}, {"application/x-numbers", "INTEGER"}},
                      .formats = {{"application/x-numbers", 32}}});
  const ClipboardProgram::Formats offered{
      {"text/uri-list", "file:///a%20b\r\nfile:///c\r\n"},
      {"x-special/gnome-copied-files", "cut\nfile:///a%20b"},
      {"text/html", longText(3'000'000)},
      {"image/png", std::string("\x89PNG\0", 5) + longText(400'000)},
      {"image/svg+xml", "<svg/>"},
      {"application/x-numbers", numbers},
      {"application/x-nothing", ""},
      {"UTF8_STRING", "gr\xC3\xBC\xC3\x9F"},
      {"TEXT", "gr\xC3\xBC\xC3\x9F"},
  };
  auto copied = offered;
  // Refused ones, those that are no contents, and further kinds of the same picture.
  for (const auto* name : {"application/x-refused", "SAVE_TARGETS", "TIMESTAMP",
                           "GTK_TEXT_BUFFER_CONTENTS", "image/bmp", "image/x-xpixmap", "PIXMAP"})
    copied.emplace_back(name, "refused");
  program.copy(copied);
  ASSERT_TRUE(showsCopies(1));
  const auto items = save();
  ClipboardProgram other;
  other.copyText("between");
  ASSERT_TRUE(showsCopies(2));
  putBack(*items);

  std::string names;
  for (const auto& [name, data] : offered) {
    SCOPED_TRACE(name);
    const auto back = pasted(name);
    EXPECT_TRUE(back.data == data) << back.data.size() << " bytes";
    const bool isNumbers = name == "application/x-numbers";
    EXPECT_EQ(back.type, isNumbers ? "INTEGER" : name == "TEXT" ? "UTF8_STRING" : name);
    EXPECT_EQ(back.format, isNumbers ? 32 : 8);
    names += name + '\n';
  }
  EXPECT_EQ(desktop_.pasted("TARGETS"),
            "TARGETS\nMULTIPLE\nTIMESTAMP\n" + names + "x-kde-passwordManagerHint\n");
  EXPECT_EQ(pasted("x-kde-passwordManagerHint").data, "secret");
  EXPECT_EQ(pasteboard_->contents()->string(pasteboardType::fileUrl), "file:///a%20b");
  EXPECT_EQ(pasteboard_->contents()->string(pasteboardType::string), "gr\xC3\xBC\xC3\x9F");

  // The mark asked others to look away from what they knew; what the user copies next has none.
  program.copyText("a copy of the user's");
  ASSERT_TRUE(showsCopies(3));
  EXPECT_EQ(shown_[2].text(), "a copy of the user's");
  EXPECT_EQ(shown_[2].contents->types(), std::vector<std::string>{pasteboardType::string});
}

TEST_F(ClipboardSaving, AClipboardWithoutContentsIsWithoutAnOwnerAgain) {
  openAndObserve();
  ASSERT_TRUE(isOwnerless());
  const auto nothing = save();
  EXPECT_TRUE(nothing->isEmpty());
  ClipboardProgram program;
  for (const bool ownsBefore : {false, true}) {
    program.copyText("the selected text");
    ASSERT_TRUE(showsCopies(ownsBefore ? 2 : 1));
    if (ownsBefore) {
      pasteboard_->clearContents();
      pasteboard_->writeString("ours");
      ASSERT_TRUE(pasteboard_->waitUntilOffered());
    }
    putBack(*nothing);
    EXPECT_TRUE(isOwnerless());
    const auto count = pasteboard_->changeCount();
    EXPECT_TRUE(showsNothingMoreFor(100ms)) << "giving it up is no copy";
    EXPECT_EQ(pasteboard_->changeCount(), count);
    EXPECT_TRUE(pasteboard_->contents()->types().empty());
  }
  // It is still the host's to write, and everybody's to empty.
  EXPECT_TRUE(pasteboard_->writeString("written later"));
  EXPECT_TRUE(pasteboard_->waitUntilOffered());
  EXPECT_EQ(pasted("UTF8_STRING").data, "written later");
  program.copyText("theirs");
  ASSERT_TRUE(showsCopies(3));
  program.disown();
  ASSERT_TRUE(showsCopies(4)) << "emptied by another program: a change that is not the host's";
}

TEST_F(ClipboardSaving, AnOwnerThatHangsCostsASecond) {
  for (const ClipboardProgram::Manners& manners :
       {ClipboardProgram::Manners{.answersTargets = false},
        ClipboardProgram::Manners{.answersData = false},
        ClipboardProgram::Manners{.neverEnds = true}}) {
    open();
    ClipboardProgram program;
    program.setManners(manners);
    program.copy({{"UTF8_STRING", "text"}, {"text/html", "text"}});
    const auto count = pasteboard_->changeCount();
    const auto items = save();
    EXPECT_TRUE(items->isEmpty());
    EXPECT_LT(savingTook_, (manners.neverEnds ? 2300ms : 1300ms) * patience());
    EXPECT_TRUE(runUntil([&] { return pasteboard_->changeCount() > count; }));
    pasteboard_.reset();
  }
}

TEST_F(ClipboardSaving, ACopyThatCameBeforeIsShownBeforeWhatWasSaved) {
  openAndObserve();
  ClipboardProgram program;
  ClipboardProgram quick;
  program.copyText("first");
  ASSERT_TRUE(showsCopies(1));
  for (std::size_t round = 1; round <= 30; ++round) {
    std::size_t shownThen = 0;
    bool isDone = false;
    // In flight while the saving begins, or a little later.
    if (round % 2 == 0) quick.copyText(std::to_string(round));
    pasteboard_->copyItems([&](const std::shared_ptr<const PasteboardItems>&) {
      shownThen = shown_.size();
      isDone = true;
    });
    if (round % 2 == 1) quick.copyText(std::to_string(round));
    const bool isBefore = round % 2 == 0;
    ASSERT_TRUE(runUntil([&] { return isDone; }));
    if (isBefore) {
      EXPECT_EQ(shownThen, round + 1);
    }
    ASSERT_TRUE(showsCopies(round + 1));
  }
}

}  // namespace
}  // namespace zephyx
