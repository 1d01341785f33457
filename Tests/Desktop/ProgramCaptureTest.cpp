#include <unistd.h>

#include <algorithm>
#include <fstream>
#include <random>

#include "Tests/Desktop/ClipboardProgram.h"
#include "Tests/Desktop/ProgramTest.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;

class ProgramCaptureTest : public ProgramTest {
 protected:
  std::filesystem::path makePicture(const std::string& geometry, const std::string& name) {
    const auto path = desktop().home() / name;
    desktop().run({"convert", "-size", geometry, "gradient:navy-orange", "png:" + path.string()});
    return path;
  }
  std::string sizeOfPicture(const std::string& path) {
    return desktop().run({"identify", "-format", "%m %wx%h", path}).output;
  }
  double residentMegabytes() {
    std::ifstream sizes("/proc/" + std::to_string(program().pid()) + "/statm");
    double total = 0, resident = 0;
    sizes >> total >> resident;
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
  }
  std::vector<std::string> newTexts() {
    std::vector<std::string> texts;
    for (const auto& row : newEntries()) texts.push_back(row.text);
    return texts;
  }
};

TEST_F(ProgramCaptureTest, RecordsWhatUsersCopyInOtherPrograms) {
  const TargetProgram editor(desktop(), TargetProgram::Kind::Gtk, "from the editor");
  editor.copyAll();
  ASSERT_TRUE(program().waitForEntry("from the editor"));
  EXPECT_EQ(newEntries().back().sourceAppName, "Mousepad");

  const TargetProgram line(desktop(), TargetProgram::Kind::Qt, "from the Qt program");
  line.copyAll();
  ASSERT_TRUE(program().waitForEntry("from the Qt program"));
  EXPECT_EQ(newEntries().back().kind, "text");
}

TEST_F(ProgramCaptureTest, TerminalSelectionIsRecordedOnlyWhenItReachesTheClipboard) {
  const auto xterm = desktop().start(
      {"xterm", "-xrm", "XTerm*selectToClipboard: true", "-e", "sh", "-c", "printf word; cat"});
  const auto window = windows().waitForClass("XTerm");
  ASSERT_TRUE(waitFor([&] { return windows().distinctColors(window) > 1; }));
  desktop().run({"xclip", "-selection", "primary"}, "only the primary selection");
  ASSERT_TRUE(waitFor([&] {
    input().click(window.x + 10, window.y + 8);
    input().click(window.x + 10, window.y + 8);
    return desktop().pasted() == "word";
  }));
  ASSERT_TRUE(program().waitForEntry("word"));
  // Clicks that follow each other fast select the whole line.
  for (const auto& text : newTexts()) EXPECT_EQ(text.substr(0, 4), "word");
}

TEST_F(ProgramCaptureTest, TellsKindsApart) {
  desktop().copy("https://example.org/a?b=c");
  ASSERT_TRUE(waitForNewEntries(1));
  EXPECT_EQ(newEntries().back().kind, "url");

  const auto document = desktop().home() / "räksmörgås 1.txt";
  writeFile(document, "12345");
  desktop().copy(
      "file://" + (desktop().home() / "r%C3%A4ksm%C3%B6rg%C3%A5s%201.txt").string() + "\r\n",
      "text/uri-list");
  ASSERT_TRUE(waitForNewEntries(2));
  EXPECT_EQ(newEntries().back().kind, "file");
  EXPECT_EQ(newEntries().back().filePath, document.string());
  EXPECT_EQ(newEntries().back().text, "räksmörgås 1.txt");

  desktop().copy(readFile(makePicture("4000x1000", "wide.png")), "image/png");
  ASSERT_TRUE(waitForNewEntries(3));
  const auto image = newEntries().back();
  EXPECT_EQ(image.kind, "image");
  EXPECT_EQ(sizeOfPicture(image.imageBlobPath), "PNG 4000x1000");
  EXPECT_EQ(sizeOfPicture(image.thumbnailPath), "PNG 240x60");

  const auto picture = makePicture("100x50", "small.png");
  desktop().copy("file://" + picture.string(), "text/uri-list");
  ASSERT_TRUE(waitForNewEntries(4));
  EXPECT_EQ(newEntries().back().kind, "file");
  EXPECT_EQ(sizeOfPicture(newEntries().back().thumbnailPath), "PNG 100x50");
}

TEST_F(ProgramCaptureTest, RecordsATwentyMegabyteTextWholeAndGivesItsMemoryBack) {
  const double before = residentMegabytes();
  std::string text(20'000'000, ' ');
  std::mt19937 random(7);
  std::generate(text.begin(), text.end(), [&] { return static_cast<char>('a' + random() % 26); });
  desktop().copy(text);
  ASSERT_TRUE(waitForNewEntries(1));
  EXPECT_TRUE(newEntries().back().text == text);
  EXPECT_TRUE(waitFor([&] { return residentMegabytes() < before + 20; }))
      << before << " -> " << residentMegabytes();
}

TEST_F(ProgramCaptureTest, KeepsNothingOfACopyThatIsMarkedSecret) {
  const std::string secret = "correct-horse-battery-staple";
  ClipboardProgram owner;
  owner.copy({{"UTF8_STRING", secret}, {"x-kde-passwordManagerHint", "secret"}});
  ASSERT_TRUE(waitFor([&] { return !owner.requests().empty(); }));
  desktop().copy("an ordinary copy");
  ASSERT_TRUE(program().waitForEntry("an ordinary copy"));
  EXPECT_EQ(newTexts(), std::vector<std::string>{"an ordinary copy"});
  EXPECT_EQ(program().logCount(secret), 0u);
}

TEST_F(ProgramCaptureTest, StaysResponsiveWhileAnOwnerNeverAnswers) {
  ASSERT_TRUE(openPanel());
  const auto panel = program().panel()->id;
  for (const bool answersTargets : {false, true}) {
    ClipboardProgram owner;
    owner.setManners({.answersTargets = answersTargets, .answersData = false});
    owner.copyText("never handed over");
    ASSERT_TRUE(waitFor([&] { return !owner.requests().empty(); }));
    input().chord({key::Control, key::V});  // into the search field
    milliseconds longest(0);
    const auto end = std::chrono::steady_clock::now() + milliseconds(1500);
    while (std::chrono::steady_clock::now() < end)
      longest = std::max(longest, windows().ping(panel));
    EXPECT_LT(longest, milliseconds(50) * patience());
  }
  desktop().copy("after the silence");
  EXPECT_TRUE(program().waitForEntry("after the silence"));
  EXPECT_EQ(newEntries().size(), 1u);
}

TEST_F(ProgramCaptureTest, LosesNoneOfManyCopiesInAQuickRow) {
  for (const milliseconds distance : {milliseconds(20), milliseconds(5)}) {
    // A machine that pauses a process for longer than the distance is no witness: several attempts.
    ClipboardProgram owner;
    std::vector<std::string> texts, recorded;
    for (int attempt = 0; attempt < 6 && (texts.empty() || recorded != texts); ++attempt) {
      const auto before = program().history().lastId();
      const auto label =
          std::to_string(distance.count()) + " ms, attempt " + std::to_string(attempt) + ", copy ";
      texts.clear();
      for (int index = 0; index < 200; ++index) texts.push_back(label + std::to_string(index));
      owner.copyTexts(texts, distance);
      (void)waitFor([&] { return program().history().lastId() >= before + 200; },
                    200 * distance + milliseconds(2000));
      recorded.clear();
      for (const auto& row : program().history().rows())
        if (row.id > before) recorded.push_back(row.text);
    }
    EXPECT_EQ(recorded, texts);
  }
}

TEST_F(ProgramCaptureTest, RecordsShortLivedProgramsInOrderAndTheSameTextTwice) {
  std::vector<std::string> texts;
  for (int index = 0; index < 40; ++index) {
    texts.push_back("xclip " + std::to_string(index / 2));
    desktop().copy(texts.back());
    pass(milliseconds(15));
  }
  ASSERT_TRUE(waitForNewEntries(texts.size()));
  EXPECT_EQ(newTexts(), texts);
}

}  // namespace
}  // namespace zephyx
