#include "Runner/MainFlutterWindow.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

using Posted = SimulatedKeyboard::Posted;

/// Paste-back into the editor, which was in front before the host.
class PasteBackTest : public HostTest {
 protected:
  void SetUp() override {
    launch();
    switchToEditor();
    monitor().rememberedApp = editor;
    desktop.pasteboard.otherProgramCopiesString("pasted");
    desktop.workspace.bringToFront(desktop.workspace.host());
    desktop.dispatch.settle();
  }

  /// Runs the chain to its end, after at most `seconds`.
  void synthesize(double seconds = 2) {
    monitor().synthesizePasteWhenTargetActive(0, [this] { ++completions_; });
    desktop.dispatch.advance(seconds);
  }

  static std::string requested(const char* kind, const char* result = "true") {
    return std::string("[PasteBack] requestActivation(") + kind + ") org.example.editor -> " +
           result;
  }

  int completions_ = 0;
};

TEST_F(PasteBackTest, WithoutARememberedApplicationItTypesBlind) {
  monitor().rememberedApp.reset();
  switchToEditor();
  EXPECT_FALSE(monitor().activatePasteTarget());
  EXPECT_EQ(takeLog(), (Lines{"[PasteBack] activatePasteTarget: sin app recordada — el llamador "
                              "sintetizará ⌘V a ciegas"}));
  synthesize();
  EXPECT_THAT(desktop.keyboard.posted(), ElementsAre(Posted{9, 0x100000}));
  EXPECT_EQ(editor->text, "pasted");
  EXPECT_EQ(completions_, 1);
  EXPECT_THAT(takeLog(), IsEmpty());
}

TEST_F(PasteBackTest, TheHostItselfIsServedThroughTheEditorsChannel) {
  for (const bool hasBundle : {true, false}) {
    SCOPED_TRACE(hasBundle);
    if (!hasBundle) desktop.workspace.forgetHostBundle();
    monitor().rememberedApp = desktop.workspace.host();
    mainWindow().orderFrontRegardless();
    EXPECT_TRUE(monitor().activatePasteTarget());
    EXPECT_EQ(takeLog(), (Lines{"[PasteBack] activatePasteTarget: destino SELF (editor de notas) — "
                                "entrega por canal pasteIntoEditor"}));
    desktop.dispatch.settle();
    EXPECT_THAT(mainScreen().takeCalls(), ElementsAre(MethodCall{"pasteIntoEditor", {}}));
    EXPECT_TRUE(mainWindow().isKeyWindow());
    EXPECT_NE(mainWindow().firstResponderDescription(), "nil");
  }
  mainWindow().orderOut();
  EXPECT_TRUE(monitor().activatePasteTarget());
  EXPECT_FALSE(mainWindow().isVisible());
  delegate->methodChannel.reset();
  EXPECT_TRUE(monitor().activatePasteTarget());
  takeLog();
  EXPECT_THAT(desktop.keyboard.posted(), IsEmpty());
}

TEST_F(PasteBackTest, AnotherApplicationIsAskedToComeForward) {
  const auto external = [](const char* name) {
    return "[PasteBack] activatePasteTarget: destino EXTERNO " + std::string(name) +
           " — activate + ⌘V del llamador";
  };
  EXPECT_FALSE(monitor().activatePasteTarget());
  EXPECT_EQ(takeLog(), (Lines{external("org.example.editor"), requested("legacy")}));
  EXPECT_EQ(editor->legacyRequests, 1);

  mainWindow().orderFrontRegardless();
  EXPECT_FALSE(monitor().activatePasteTarget());
  EXPECT_FALSE(mainWindow().isVisible());
  EXPECT_EQ(takeLog(), (Lines{external("org.example.editor"),
                              "[PasteBack] activatePasteTarget: ventana de notas leftover visible "
                              "— orderOut antes de activar el destino externo",
                              requested("legacy")}));

  monitor().rememberedApp = desktop.workspace.start({"", "Nameless", nullptr});
  monitor().activatePasteTarget();
  EXPECT_EQ(takeLog(), (Lines{external("?"), "[PasteBack] requestActivation(legacy) ? -> true"}));
}

TEST_F(PasteBackTest, ActivationIsCooperativeWhereTheSystemWantsThat) {
  desktop.workspace.setUsesCooperativeActivation(true);
  editor->acceptsRequests = false;
  monitor().requestActivation(*editor);
  EXPECT_EQ(takeLog(), (Lines{requested("cooperativa", "false")}));
  EXPECT_EQ(editor->cooperativeRequests, 1);
  EXPECT_EQ(editor->legacyRequests, 0);
}

TEST_F(PasteBackTest, AnActiveTargetGetsTheChordAtOnceAndEachTime) {
  switchToEditor();
  for (const char* text : {"pasted", "pastedpasted"}) {
    completions_ = 0;
    monitor().synthesizePasteWhenTargetActive(0, [this] { ++completions_; });
    EXPECT_EQ(completions_, 1);
    desktop.dispatch.settle();
    EXPECT_EQ(editor->text, text);
  }
  EXPECT_THAT(takeLog(), IsEmpty());
}

TEST_F(PasteBackTest, WaitsForTheTargetAndTypesOnce) {
  for (const std::size_t request : {1u, 3u, 10u}) {
    SCOPED_TRACE(request);
    desktop.workspace.bringToFront(desktop.workspace.host());
    editor->text.clear();
    editor->legacyRequests = 0;
    editor->comesForwardAtRequest = static_cast<int>(request);
    completions_ = 0;
    const double last = 0.1 * static_cast<double>(request);
    synthesize(last - 0.05);
    EXPECT_EQ(completions_, 0);
    desktop.dispatch.advance(0.06);
    Lines lines(request, requested("legacy"));
    lines.push_back("[PasteBack] synthesizePaste: destino activo tras " + std::to_string(request) +
                    " reintentos — posteando ⌘V");
    EXPECT_EQ(takeLog(), lines);
    EXPECT_EQ(editor->text, "pasted");
    EXPECT_EQ(completions_, 1);
    desktop.dispatch.advance(1);
    EXPECT_EQ(editor->text, "pasted");
  }
}

TEST_F(PasteBackTest, ATargetThatNeverComesForwardIsNotTypedInto) {
  editor->comesForwardAtRequest.reset();
  monitor().activatePasteTarget();
  takeLog();
  synthesize(5);
  Lines expected(10, requested("legacy"));
  expected.push_back(
      "[PasteBack] synthesizePaste: org.example.editor nunca se activó tras 10 reintentos — se "
      "OMITE el ⌘V");
  EXPECT_EQ(takeLog(), expected);
  EXPECT_EQ(editor->legacyRequests, 11);
  EXPECT_THAT(desktop.keyboard.posted(), IsEmpty());
  EXPECT_EQ(completions_, 1);
}

TEST_F(PasteBackTest, CompletesWhenTheChordCannotBeMadeOrDoesNotArrive) {
  switchToEditor();
  desktop.accessibility.killGrant();
  synthesize();
  desktop.keyboard.refuseToPost();
  synthesize();
  EXPECT_EQ(editor->text, "");
  EXPECT_EQ(completions_, 2);
}

TEST_F(PasteBackTest, TheChainEndsWithTheHost) {
  ignoreLog("[PasteBack]");
  editor->comesForwardAtRequest.reset();
  synthesize(0.35);
  endHost();
  EXPECT_EQ(editor->legacyRequests, 4);
  EXPECT_EQ(completions_, 0);
}

}  // namespace
}  // namespace zephyx
