#pragma once

#include <algorithm>

#include "Platform/Dispatch.h"
#include "Platform/Pasteboard.h"
#include "Tests/Contract/ContractTest.h"

namespace zephyx {

class PasteboardContract : public ContractTest {
 protected:
  static Bytes bytes(const std::string& text) { return {text.begin(), text.end()}; }

  Pasteboard& pasteboard() { return platform().pasteboard(); }

  void copyText(const std::string& text) {
    desktop().otherProgramCopies({{pasteboardType::string, bytes(text)}});
  }

  /// Copies, and waits until the pasteboard shows it.
  void copyAndSee(const std::vector<PasteboardItem>& items) {
    const auto before = pasteboard().changeCount();
    desktop().otherProgramCopies(items);
    ASSERT_TRUE(becomesTrue([&] { return pasteboard().changeCount() > before; }));
  }

  struct Reading {
    std::vector<std::string> types;
    std::optional<std::string> text;
  };

  /// Reads as the host does: away from the main thread. Nothing when that takes over 10 seconds.
  std::optional<Reading> read(std::shared_ptr<PasteboardContents> contents,
                              const std::string& type = pasteboardType::string) {
    auto slot = std::make_shared<std::optional<Reading>>();
    auto& dispatch = platform().dispatch();
    dispatch.globalQueue().async([slot, contents, type, &dispatch] {
      Reading reading{contents->types(), contents->string(type)};
      dispatch.mainQueue().async([slot, reading] { *slot = reading; });
    });
    desktop().runUntil([&] { return slot->has_value(); }, 10);
    return *slot;
  }

  std::optional<std::string> otherProgramGets(const char* type) {
    const auto data = desktop().otherProgramPastes(type);
    if (!data) return std::nullopt;
    return std::string(data->begin(), data->end());
  }

  /// Nothing when that takes over 10 seconds.
  std::shared_ptr<const PasteboardItems> copyItems() {
    auto slot = std::make_shared<std::shared_ptr<const PasteboardItems>>();
    pasteboard().copyItems([slot](std::shared_ptr<const PasteboardItems> items) { *slot = items; });
    desktop().runUntil([&] { return *slot != nullptr; }, 10);
    return *slot;
  }
  /// Takes the pasteboard over with what `copyItems` gave.
  std::int64_t putBack(const PasteboardItems& items) {
    const auto count = pasteboard().clearContents();
    EXPECT_TRUE(pasteboard().writeItems(items));
    return count;
  }

  /// Observes changes and reads the text of each, in the order of the calls.
  struct Observed {
    int announced = 0;
    std::vector<std::int64_t> counts;
    std::vector<std::shared_ptr<PasteboardContents>> contents;
  };
  Registration observe(Observed& observed) {
    return pasteboard().observeChanges({{}, {pasteboardType::string}}, [this, &observed] {
      ++observed.announced;
      observed.counts.push_back(pasteboard().changeCount());
      observed.contents.push_back(pasteboard().contents());
    });
  }
};

TEST_P(PasteboardContract, ShowsWhatAnotherProgramCopiedWithItsTypesInTheOwnersOrder) {
  copyAndSee({{pasteboardType::url, bytes("https://example.org/ä")},
              {pasteboardType::string, bytes("ein Wort, слово, 語")}});
  const auto reading = read(pasteboard().contents());
  ASSERT_TRUE(reading);
  EXPECT_EQ(reading->text, "ein Wort, слово, 語");
  ASSERT_EQ(reading->types.size(), 2u);
  EXPECT_EQ(reading->types[0], pasteboardType::url);
  EXPECT_EQ(reading->types[1], pasteboardType::string);
  EXPECT_EQ(read(pasteboard().contents(), pasteboardType::url)->text, "https://example.org/ä");
  EXPECT_FALSE(read(pasteboard().contents(), pasteboardType::tiff)->text);
}

TEST_P(PasteboardContract, CountsEveryCopyAlsoOfTheSameText) {
  const auto first = pasteboard().changeCount();
  copyAndSee({{pasteboardType::string, bytes("same")}});
  const auto second = pasteboard().changeCount();
  EXPECT_GT(second, first);
  copyAndSee({{pasteboardType::string, bytes("same")}});
  const auto third = pasteboard().changeCount();
  EXPECT_GT(third, second);
  desktop().pass(0.3);
  EXPECT_EQ(pasteboard().changeCount(), third);
}

TEST_P(PasteboardContract, OwnWritesReachOtherProgramsAndChangeTheCountOnce) {
  copyAndSee({{pasteboardType::string, bytes("theirs")}});
  const auto before = pasteboard().changeCount();
  const auto cleared = pasteboard().clearContents();
  EXPECT_GT(cleared, before);
  EXPECT_TRUE(pasteboard().writeString("mine: ñ"));
  EXPECT_TRUE(pasteboard().writeUrl("https://example.org/a?b=c"));
  EXPECT_EQ(pasteboard().changeCount(), cleared);
  EXPECT_TRUE(becomesTrue([&] { return otherProgramGets(pasteboardType::string) == "mine: ñ"; }));
  EXPECT_EQ(otherProgramGets(pasteboardType::url), "https://example.org/a?b=c");
  EXPECT_EQ(pasteboard().changeCount(), cleared);
  EXPECT_EQ(read(pasteboard().contents())->text, "mine: ñ");
}

TEST_P(PasteboardContract, ClearingTakesEverythingAway) {
  copyAndSee({{pasteboardType::string, bytes("secret")}});
  pasteboard().clearContents();
  EXPECT_TRUE(becomesTrue([&] { return !otherProgramGets(pasteboardType::string); }));
  const auto reading = read(pasteboard().contents());
  ASSERT_TRUE(reading);
  EXPECT_TRUE(reading->types.empty());
  EXPECT_FALSE(reading->text);
}

TEST_P(PasteboardContract, FileUrlsBecomeFileReferences) {
  pasteboard().clearContents();
  EXPECT_TRUE(pasteboard().writeUrl("file:///tmp/a%20b.txt"));
  EXPECT_TRUE(becomesTrue([&] {
    return otherProgramGets(pasteboardType::fileUrl)
               .value_or("")
               .rfind("file:///tmp/a%20b.txt", 0) == 0;
  }));
}

TEST_P(PasteboardContract, PicturesKeepTheirPixels) {
  pasteboard().clearContents();
  const auto image = platform().images().decode(desktop().encodedPicture({60, 40}));
  ASSERT_TRUE(image);
  EXPECT_TRUE(pasteboard().writeImage(*image));
  std::optional<Bytes> pasted;
  ASSERT_TRUE(becomesTrue([&] {
    pasted = desktop().otherProgramPastes(pasteboardType::png);
    return pasted.has_value();
  }));
  const auto decoded = platform().images().decode(*pasted);
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded->pixelSize(), (PixelSize{60, 40}));
}

TEST_P(PasteboardContract, AHungOwnerHoldsUpNobodyAndReadsAsNothing) {
  const auto before = pasteboard().changeCount();
  desktop().hungProgramCopies({pasteboardType::string});
  ASSERT_TRUE(desktop().runUntil([&] { return pasteboard().changeCount() > before; }, 15));
  const auto reading = read(pasteboard().contents());
  ASSERT_TRUE(reading);
  EXPECT_FALSE(reading->text);
}

TEST_P(PasteboardContract, AnnouncesEachForeignChangeOnceInOrderWithItsContents) {
  Observed observed;
  const auto registration = observe(observed);
  if (!desktop().announcesPasteboardChanges()) {
    EXPECT_FALSE(registration);
    return;
  }
  ASSERT_TRUE(registration);
  constexpr int copies = 20;
  for (int i = 0; i < copies; ++i) {
    copyText("text " + std::to_string(i));
    // A copy that is gone before anybody asked for it has no contents any more.
    ASSERT_TRUE(becomesTrue([&] { return observed.announced > i; }));
  }
  desktop().pass(0.2);
  ASSERT_EQ(observed.announced, copies);
  for (int i = 0; i < copies; ++i) {
    const auto index = static_cast<std::size_t>(i);
    EXPECT_EQ(read(observed.contents[index])->text, "text " + std::to_string(i));
    if (i > 0) {
      EXPECT_GT(observed.counts[index], observed.counts[index - 1]);
    }
  }
}

TEST_P(PasteboardContract, OwnWritesAreNotAnnouncedAndADroppedObserverHearsNothing) {
  Observed observed;
  auto registration = observe(observed);
  if (!registration) return;
  pasteboard().clearContents();
  pasteboard().writeString("mine");
  desktop().pass(0.3);
  EXPECT_EQ(observed.announced, 0);
  copyAndSee({{pasteboardType::string, bytes("theirs")}});
  EXPECT_EQ(observed.announced, 1);
  registration.reset();
  copyAndSee({{pasteboardType::string, bytes("theirs again")}});
  EXPECT_EQ(observed.announced, 1);
}

TEST_P(PasteboardContract, FetchesNothingOfWhatTheObserverForbids) {
  const std::string concealed = "org.nspasteboard.ConcealedType";
  int announced = 0;
  const auto registration =
      pasteboard().observeChanges({{concealed}, {pasteboardType::string}}, [&] { ++announced; });
  copyAndSee({{pasteboardType::string, bytes("password")}, {concealed, bytes("secret")}});
  const auto types = read(pasteboard().contents(), "nothing")->types;
  EXPECT_NE(std::find(types.begin(), types.end(), concealed), types.end());
  const auto old = pasteboard().contents();
  copyAndSee({{pasteboardType::string, bytes("harmless")}});
  EXPECT_NE(read(old)->text, "password");
}

TEST_P(PasteboardContract, PutsBackEveryTypeOfWhatWasThereBefore) {
  const std::string picture(300'000, '\x01');
  copyAndSee({{pasteboardType::fileUrl, bytes("file:///tmp/a.txt")},
              {pasteboardType::png, bytes(picture)},
              {pasteboardType::string, bytes("before: ñ")}});
  const auto theirs = copyItems();
  ASSERT_TRUE(theirs);
  EXPECT_FALSE(theirs->isEmpty());
  copyAndSee({{pasteboardType::string, bytes("between")}});

  // Once as the other program's, once as what the host itself has there.
  auto items = theirs;
  for (int round = 0; round < 2; ++round) {
    const auto count = putBack(*items);
    EXPECT_TRUE(
        becomesTrue([&] { return otherProgramGets(pasteboardType::string) == "before: ñ"; }));
    EXPECT_EQ(otherProgramGets(pasteboardType::fileUrl), "file:///tmp/a.txt");
    EXPECT_TRUE(otherProgramGets(pasteboardType::png) == picture);
    EXPECT_EQ(pasteboard().changeCount(), count);
    EXPECT_EQ(read(pasteboard().contents())->text, "before: ñ");
    EXPECT_EQ(read(pasteboard().contents(), pasteboardType::fileUrl)->text, "file:///tmp/a.txt");
    items = copyItems();
    ASSERT_TRUE(items);
    copyAndSee({{pasteboardType::string, bytes("between")}});
  }
}

TEST_P(PasteboardContract, AnEmptyPasteboardHasNothingToPutBack) {
  copyAndSee({{pasteboardType::string, bytes("theirs")}});
  pasteboard().clearContents();
  const auto items = copyItems();
  ASSERT_TRUE(items);
  EXPECT_TRUE(items->isEmpty());
  EXPECT_FALSE(pasteboard().writeItems(*items));
  copyAndSee({{pasteboardType::string, bytes("theirs again")}});
  EXPECT_EQ(read(pasteboard().contents())->text, "theirs again");
}

TEST_P(PasteboardContract, AHungOwnersItemsAreGivenUp) {
  const auto before = pasteboard().changeCount();
  desktop().hungProgramCopies({pasteboardType::string});
  ASSERT_TRUE(desktop().runUntil([&] { return pasteboard().changeCount() > before; }, 15));
  const auto items = copyItems();
  ASSERT_TRUE(items);
  EXPECT_TRUE(items->isEmpty());
}

}  // namespace zephyx
