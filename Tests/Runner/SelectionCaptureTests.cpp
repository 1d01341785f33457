#include "Runner/SelectionCapture.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

/// The texts of a capture, which is to come once.
using Captured = std::vector<std::optional<std::string>>;

class SelectionCaptureTest : public HostTest, public testing::WithParamInterface<bool> {
 protected:
  void SetUp() override {
    desktop.pasteboard.setAnnouncesChanges(GetParam());
    launch();
    switchToEditor();
    takeLog();
  }
  /// The user copies a text in good time before the capture.
  void copyBefore(const std::string& text) {
    desktop.pasteboard.otherProgramCopiesString(text);
    desktop.dispatch.advance(1);
    panelScreen().takeCalls();
  }
  static std::shared_ptr<Captured> start() {
    auto captured = std::make_shared<Captured>();
    SelectionCapture::capture(
        [captured](std::optional<std::string> text) { captured->push_back(std::move(text)); });
    return captured;
  }
  Captured capture(double seconds = 1) {
    const auto captured = start();
    desktop.dispatch.advance(seconds);
    return *captured;
  }
};

TEST_P(SelectionCaptureTest, TakesTheSelectionAndPutsEverythingBackWithoutAnEntry) {
  editor->selection = "selected";
  EXPECT_THAT(capture(), ElementsAre("selected"));
  EXPECT_THAT(desktop.pasteboard.offeredTypes(), IsEmpty()) << "as it was before";

  SimulatedPasteboard::Owner owner;
  owner.items = {{"public.png", SimulatedImages::encoded({3, 2})},
                 {"public.file-url", bytesOf("file:///tmp/a")},
                 {"org.example.private", bytesOf("as it was")}};
  desktop.pasteboard.otherProgramCopies(std::move(owner));
  desktop.dispatch.advance(1);
  panelScreen().takeCalls();
  EXPECT_THAT(capture(), ElementsAre("selected"));
  EXPECT_THAT(desktop.keyboard.posted(),
              Each(SimulatedKeyboard::Posted{8, eventModifier::command}));
  EXPECT_THAT(desktop.pasteboard.offeredTypes(),
              ElementsAre("public.png", "public.file-url", "org.example.private"));
  EXPECT_EQ(desktop.pasteboard.otherProgramPastes("org.example.private"), bytesOf("as it was"));
  EXPECT_THAT(panelScreen().takeCalls(), IsEmpty());

  desktop.pasteboard.otherProgramCopiesString("the user's next copy");
  desktop.dispatch.advance(1);
  EXPECT_EQ(panelScreen().takeCalls().size(), 1u);
}

TEST_P(SelectionCaptureTest, WaitsForASlowProgramButNotForever) {
  copyBefore("before");
  editor->selection = "slow";
  editor->copyTime = 0.2;
  EXPECT_THAT(capture(), ElementsAre("slow"));
  EXPECT_EQ(desktop.pasteboard.pastedString(), "before");
  EXPECT_THAT(panelScreen().takeCalls(), IsEmpty());

  editor->copyTime = 0.5;
  EXPECT_THAT(capture(2), ElementsAre("before"));
  EXPECT_EQ(desktop.pasteboard.pastedString(), "slow");
  EXPECT_EQ(panelScreen().takeCalls().size(), 1u) << "by then the copy is the user's";
}

TEST_P(SelectionCaptureTest, WithoutASelectionItGivesUpAfterElevenLooks) {
  copyBefore("on the pasteboard");
  const auto captured = start();
  desktop.dispatch.advance(0.435);
  EXPECT_THAT(*captured, IsEmpty());
  desktop.dispatch.advance(0.01);
  EXPECT_THAT(*captured, ElementsAre("on the pasteboard"));
  EXPECT_THAT(panelScreen().takeCalls(), IsEmpty());
}

TEST_P(SelectionCaptureTest, ACopyThatIsNoTextIsNoText) {
  copyBefore("before");
  const auto captured = start();
  desktop.dispatch.advance(0.02);
  desktop.pasteboard.otherProgramCopies(
      {.items = {{"public.png", SimulatedImages::encoded({3, 2})}}});
  desktop.dispatch.advance(1);
  EXPECT_THAT(*captured, ElementsAre(std::nullopt));
  EXPECT_EQ(desktop.pasteboard.pastedString(), "before");
}

TEST_P(SelectionCaptureTest, TwoAtATimeBothEndAndHoldTheHistoryBackUntilThen) {
  editor->selection = "selected";
  panelScreen().takeCalls();
  const auto first = start();
  editor->selection.clear();
  desktop.dispatch.advance(0.02);
  editor->selection = "selected";
  EXPECT_THAT(capture(), SizeIs(1));
  EXPECT_THAT(*first, SizeIs(1));
  EXPECT_THAT(panelScreen().takeCalls(), IsEmpty());
  EXPECT_FALSE(monitor().isSuspended);
}

TEST_P(SelectionCaptureTest, WithoutThePermissionItAsksForItAndTakesThePasteboard) {
  desktop.accessibility.setTrusted(false);
  copyBefore("on the pasteboard");
  editor->selection = "selected";
  EXPECT_THAT(capture(), ElementsAre("on the pasteboard"));
  EXPECT_EQ(desktop.accessibility.promptCount(), 1);
  EXPECT_THAT(desktop.keyboard.posted(), IsEmpty());
  EXPECT_THAT(takeLog(), ElementsAre("[Translate] SelectionCapture: sin permiso de Accesibilidad — "
                                     "solicitando y cayendo a portapapeles actual"));
}

TEST_P(SelectionCaptureTest, TheEndOfTheHostEndsIt) {
  editor->selection = "selected";
  editor->copyTime = 0.2;
  const auto captured = start();
  desktop.dispatch.advance(0.1);
  endHost();
  EXPECT_THAT(*captured, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Systems, SelectionCaptureTest, testing::Bool(),
                         [](const auto& test) { return test.param ? "Announcing" : "Silent"; });

}  // namespace
}  // namespace zephyx
