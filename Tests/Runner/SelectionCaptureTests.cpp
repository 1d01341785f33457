#include "Runner/SelectionCapture.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

/// The text of a capture, with how often it came.
struct Captured {
  std::optional<std::string> text;
  int count = 0;
};

class SelectionCaptureTest : public HostTest, public testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    desktop.pasteboard.setAnnouncesChanges(GetParam());
    launch();
    switchToEditor();
    takeLog();
  }
  void copyImageAndFile() {
    SimulatedPasteboard::Owner owner;
    owner.items = {{"public.png", SimulatedImages::encoded({3, 2})},
                   {"public.file-url", bytesOf("file:///tmp/a")},
                   {"org.example.private", bytesOf("as it was")}};
    desktop.pasteboard.otherProgramCopies(std::move(owner));
    desktop.dispatch.advance(1);
    panelScreen().takeCalls();
  }
  Captured capture(double seconds = 1) {
    auto captured = std::make_shared<Captured>();
    SelectionCapture::capture([captured](std::optional<std::string> text) {
      captured->text = std::move(text);
      ++captured->count;
    });
    desktop.dispatch.advance(seconds);
    return *captured;
  }
};

TEST_P(SelectionCaptureTest, TakesTheSelectionAndPutsEverythingBackWithoutAnEntry) {
  copyImageAndFile();
  editor->selection = "selected";
  const auto captured = capture();
  EXPECT_EQ(captured.count, 1);
  EXPECT_THAT(captured.text, Optional(std::string("selected")));
  EXPECT_THAT(desktop.keyboard.posted(),
              ElementsAre(SimulatedKeyboard::Posted{8, eventModifier::command}));
  EXPECT_THAT(desktop.pasteboard.offeredTypes(),
              ElementsAre("public.png", "public.file-url", "org.example.private"));
  EXPECT_EQ(desktop.pasteboard.otherProgramPastes("org.example.private"), bytesOf("as it was"));
  EXPECT_THAT(panelScreen().takeCalls(), IsEmpty());

  desktop.pasteboard.otherProgramCopiesString("the user's next copy");
  desktop.dispatch.advance(1);
  EXPECT_EQ(panelScreen().takeCalls().size(), 1u);
}

TEST_P(SelectionCaptureTest, AnEmptyPasteboardIsEmptyAgain) {
  editor->selection = "selected";
  EXPECT_THAT(capture().text, Optional(std::string("selected")));
  EXPECT_THAT(desktop.pasteboard.offeredTypes(), IsEmpty());
}

TEST_P(SelectionCaptureTest, WaitsForASlowProgramButNotForever) {
  desktop.pasteboard.otherProgramCopiesString("before");
  desktop.dispatch.advance(1);
  panelScreen().takeCalls();
  editor->selection = "slow";
  editor->copyTime = 0.2;
  EXPECT_THAT(capture().text, Optional(std::string("slow")));
  EXPECT_EQ(desktop.pasteboard.pastedString(), "before");
  EXPECT_THAT(panelScreen().takeCalls(), IsEmpty());

  editor->copyTime = 0.5;
  EXPECT_THAT(capture(2).text, Optional(std::string("before")));
  EXPECT_EQ(desktop.pasteboard.pastedString(), "slow");
  EXPECT_EQ(panelScreen().takeCalls().size(), 1u) << "by then the copy is the user's";
}

TEST_P(SelectionCaptureTest, WithoutASelectionItGivesUpAfterElevenLooks) {
  desktop.pasteboard.otherProgramCopiesString("on the pasteboard");
  desktop.dispatch.advance(1);
  panelScreen().takeCalls();
  auto captured = std::make_shared<Captured>();
  SelectionCapture::capture([captured](std::optional<std::string> text) {
    captured->text = std::move(text);
    ++captured->count;
  });
  desktop.dispatch.advance(0.435);
  EXPECT_EQ(captured->count, 0);
  desktop.dispatch.advance(0.01);
  EXPECT_EQ(captured->count, 1);
  EXPECT_THAT(captured->text, Optional(std::string("on the pasteboard")));
  EXPECT_THAT(panelScreen().takeCalls(), IsEmpty());
}

TEST_P(SelectionCaptureTest, ACopyThatIsNoTextIsNoText) {
  desktop.pasteboard.otherProgramCopiesString("before");
  desktop.dispatch.advance(1);
  editor->selection.clear();
  auto captured = std::make_shared<Captured>();
  SelectionCapture::capture([captured](std::optional<std::string> text) {
    captured->text = std::move(text);
    ++captured->count;
  });
  desktop.dispatch.advance(0.02);
  SimulatedPasteboard::Owner picture;
  picture.items = {{"public.png", SimulatedImages::encoded({3, 2})}};
  desktop.pasteboard.otherProgramCopies(std::move(picture));
  desktop.dispatch.advance(1);
  EXPECT_EQ(captured->count, 1);
  EXPECT_EQ(captured->text, std::nullopt);
  EXPECT_EQ(desktop.pasteboard.pastedString(), "before");
}

TEST_P(SelectionCaptureTest, TwoAtATimeBothEndAndHoldTheHistoryBackUntilThen) {
  editor->selection = "selected";
  panelScreen().takeCalls();
  auto first = std::make_shared<Captured>();
  SelectionCapture::capture([first](const auto&) { ++first->count; });
  editor->selection.clear();
  desktop.dispatch.advance(0.02);
  editor->selection = "selected";
  EXPECT_EQ(capture().count, 1);
  EXPECT_EQ(first->count, 1);
  EXPECT_THAT(panelScreen().takeCalls(), IsEmpty());
  EXPECT_FALSE(monitor().isSuspended);
}

TEST_P(SelectionCaptureTest, WithoutThePermissionItAsksForItAndTakesThePasteboard) {
  desktop.accessibility.setTrusted(false);
  desktop.pasteboard.otherProgramCopiesString("on the pasteboard");
  desktop.dispatch.advance(1);
  editor->selection = "selected";
  EXPECT_THAT(capture().text, Optional(std::string("on the pasteboard")));
  EXPECT_EQ(desktop.accessibility.promptCount(), 1);
  EXPECT_THAT(desktop.keyboard.posted(), IsEmpty());
  EXPECT_THAT(takeLog(), ElementsAre("[Translate] SelectionCapture: sin permiso de Accesibilidad — "
                                     "solicitando y cayendo a portapapeles actual"));
}

TEST_P(SelectionCaptureTest, TheEndOfTheHostEndsIt) {
  editor->selection = "selected";
  editor->copyTime = 0.2;
  auto isCalled = std::make_shared<bool>(false);
  SelectionCapture::capture([isCalled](const auto&) { *isCalled = true; });
  desktop.dispatch.advance(0.1);
  endHost();
  EXPECT_FALSE(*isCalled);
}

INSTANTIATE_TEST_SUITE_P(Systems, SelectionCaptureTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Announcing" : "Silent"; });

}  // namespace
}  // namespace zephyx
