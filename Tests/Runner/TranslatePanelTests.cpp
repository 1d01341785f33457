#include "Runner/TranslatePanelController.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

MethodCall event(const char* name, Map props) {
  return {"telemetryEvent", Map{{"name", name}, {"props", std::move(props)}}};
}

class TranslatePanelTest : public HostTest {
 protected:
  void SetUp() override {
    launch();
    switchToEditor();
    editor->selection = "hello";
    takeLog();
    mainScreen().takeCalls();
  }
  TranslatePanelController& controller() { return TranslatePanelController::shared(); }
  /// Presses the hotkey and lets the capture end; drops what the engines were told.
  void open(HotkeyID id = HotkeyID::translate) {
    pressHotkey(id);
    desktop.dispatch.advance(0.1);
    ASSERT_TRUE(translatePanel().isVisible());
    EXPECT_EQ(call("translatePanelReady"), nil);
    translateScreen().takeCalls();
    mainScreen().takeCalls();
    takeLog();
  }
  std::optional<MethodReply> call(const std::string& method, const Value& arguments = {}) {
    return translateScreen().call(method, arguments);
  }
  double viewAlpha() { return desktop.engines.viewController("translate_engine")->alpha(); }
};

TEST_F(TranslatePanelTest, AHotkeyShowsTheSelectionOfTheApplicationInFront) {
  for (const auto& [id, mode] : {std::pair(HotkeyID::translate, "translate"),
                                 {HotkeyID::spelling, "spelling"},
                                 {HotkeyID::improve, "improve"}}) {
    SCOPED_TRACE(mode);
    pressHotkey(id);
    EXPECT_FALSE(translatePanel().isVisible()) << "before the copy chord has reached the program";
    desktop.dispatch.advance(0.1);
    EXPECT_TRUE(translatePanel().isKeyWindow());
    EXPECT_EQ(translatePanel().frame().size, (Size{620, 580}));
    EXPECT_EQ(monitor().rememberedApp, editor);
    const Map shown{{"text", "hello"}, {"mode", mode}, {"source", "external"}};
    EXPECT_THAT(translateScreen().takeCalls(), ElementsAre(MethodCall{"translatePanelShown", {}},
                                                           MethodCall{"translateShow", shown},
                                                           MethodCall{"translateFocusPanel", {}}));
    EXPECT_EQ(call("translateHidePanel"), nil);
    EXPECT_TRUE(editor->isActive()) << "the focus goes back to where the user was";
  }
  ignoreLog("[Translate]");
}

TEST_F(TranslatePanelTest, TheTextAndTheLastSessionComeFromWhereTheUserIs) {
  const auto restored = [](const char* origin) {
    return Contains(MethodCall{"translateRestoreLast", Map{{"origin", origin}}});
  };
  ignoreLog("[Translate]");
  pressHotkey(HotkeyID::restoreLast);
  EXPECT_THAT(translateScreen().takeCalls(), restored("external"));
  call("translateHidePanel");
  delegate->togglePopover();
  desktop.dispatch.settle();
  pressHotkey(HotkeyID::restoreLast);
  EXPECT_THAT(translateScreen().takeCalls(), restored("editor"));
  call("translateHidePanel");

  mainWindow().makeKeyAndOrderFront();
  mainScreen().takeCalls();
  pressHotkey(HotkeyID::improve);
  EXPECT_THAT(mainScreen().takeCalls(),
              ElementsAre(MethodCall{"shortcutUsed", Map{{"id", 5}}},
                          MethodCall{"headlessCaptureEditor", Map{{"mode", "improve"}}}));
  EXPECT_THAT(desktop.keyboard.posted(), IsEmpty());
  EXPECT_TRUE(translatePanel().isKeyWindow());
  EXPECT_TRUE(mainWindow().isVisible());
  const Map text{{"text", "note"}, {"mode", "improve"}};
  EXPECT_EQ(mainScreen().call("headlessShowEditorText", text), nil);
  const Map shown{{"text", "note"}, {"mode", "improve"}, {"source", "editor"}};
  EXPECT_THAT(translateScreen().takeCalls(), Contains(MethodCall{"translateShow", shown}));
}

TEST_F(TranslatePanelTest, ItsContentIsHeldBackUntilTheEngineIsReadyOrAQuarterOfASecondIsOver) {
  controller().showPanel();
  EXPECT_EQ(viewAlpha(), 0);
  EXPECT_EQ(call("translatePanelReady"), nil);
  EXPECT_EQ(viewAlpha(), 1);
  desktop.dispatch.advance(1);
  EXPECT_THAT(takeLog(), ElementsAre(HasSubstr("showPanel: visible=true key=")));

  controller().hidePanel("test");
  takeLog();
  controller().showPanel();
  desktop.dispatch.advance(0.2);
  controller().showPanel();  // begins anew
  desktop.dispatch.advance(0.2);
  EXPECT_EQ(viewAlpha(), 0);
  takeLog();
  desktop.dispatch.advance(0.06);
  EXPECT_EQ(viewAlpha(), 1);
  EXPECT_THAT(
      takeLog(),
      ElementsAre("[Translate] blackout: failsafe 250ms — revelando sin translatePanelReady"));
}

TEST_F(TranslatePanelTest, ACaptureOfADismissedSessionIsDroppedAndNothingIsGeneratedForIt) {
  const auto epoch = controller().captureEpoch();
  controller().hidePanel("test");
  EXPECT_EQ(controller().captureEpoch(), epoch + 1);
  takeLog();
  controller().deliver("late", epoch, "translate");
  desktop.dispatch.settle();
  EXPECT_THAT(translateScreen().takeCalls(), IsEmpty());
  EXPECT_THAT(mainScreen().takeCalls(), ElementsAre(MethodCall{"headlessTranslateCancel", {}}));
  EXPECT_THAT(takeLog(),
              ElementsAre("[Translate] deliver: época obsoleta (0 != 1) — descartando captura "
                          "tardía tras dismiss"));
}

TEST_F(TranslatePanelTest, EachSessionEndsInOneEventWithItsOutcome) {
  const auto ended = [](const char* mode, const char* outcome) {
    return event("ai_action_completed", Map{{"mode", mode}, {"outcome", outcome}});
  };
  ignoreLog("[Translate]");
  ignoreLog("[PasteBack]");
  open(HotkeyID::spelling);
  call("translateHidePanel");
  call("translateHidePanel");
  EXPECT_THAT(mainScreen().takeCalls(), ElementsAre(ended("spelling", "dismissed")));

  open(HotkeyID::improve);
  call("translateAcceptToEditor", Map{{"text", "better"}});
  call("translateHidePanel");
  EXPECT_THAT(mainScreen().takeCalls(),
              ElementsAre(MethodCall{"headlessAcceptToEditor", Map{{"text", "better"}}},
                          ended("improve", "accepted")));

  open();
  call("translateAcceptToEditor", Map{{"words", "nothing to accept"}});
  desktop.pasteboard.otherProgramCopiesString("hola");
  desktop.dispatch.advance(1);
  editor->text.clear();
  EXPECT_EQ(call("translatePaste"), std::nullopt) << "answered once it is pasted";
  desktop.dispatch.advance(1);
  EXPECT_EQ(editor->text, "hola");
  EXPECT_THAT(mainScreen().takeCalls(), ElementsAre(ended("translate", "pasted")));
}

TEST_F(TranslatePanelTest, ALossOfTheKeyboardDismissesItExceptRightAfterShowingAndForTheNotes) {
  const auto loseKeyboard = [&] {
    desktop.application.takeKeyboardAway();
    desktop.dispatch.settle();
  };
  open();
  loseKeyboard();
  EXPECT_TRUE(translatePanel().isKeyWindow());
  EXPECT_THAT(takeLog(), ElementsAre("[Translate] panelDidResignKey: resign transitorio dentro de "
                                     "la gracia — reafirmando key"));
  desktop.dispatch.advance(0.6);
  desktop.dispatch.setWallClock(1'000'000'000);  // whoever sets the clock does not show the panel
  loseKeyboard();
  EXPECT_FALSE(translatePanel().isVisible());
  EXPECT_THAT(
      takeLog(),
      ElementsAre("[Translate] hidePanel — motivo: panelDidResignKey (click fuera / pérdida de "
                  "foco genuina)"));

  switchToEditor();
  open();
  desktop.dispatch.advance(0.6);
  takeLog();
  mainWindow().makeKeyAndOrderFront();
  desktop.dispatch.settle();
  EXPECT_TRUE(translatePanel().isVisible());
  EXPECT_THAT(
      takeLog(),
      ElementsAre("[Translate] panelDidResignKey: key pasó a la ventana de notas — panel queda "
                  "visible (overlay), generación continúa"));
  switchToEditor();
  EXPECT_FALSE(translatePanel().isVisible());
  EXPECT_THAT(
      takeLog(),
      ElementsAre("[Translate] hidePanel — motivo: appDidResignActive (cambio a otra app)"));
}

TEST_F(TranslatePanelTest, GrowsAndShrinksAroundItsCentreWithinItsScreen) {
  for (const auto& [visible, wide] : {std::pair<Rect, Size>{{{0, 0}, {1280, 800}}, {1060, 640}},
                                      {{{0, 0}, {1000, 600}}, {960, 560}}}) {
    desktop.screens.setScreens({{{{0, 0}, {1600, 1000}}, visible}}, 0);
    open();
    const auto compact = translatePanel().frame();
    EXPECT_EQ(call("translateSetPanelWide", Map{{"wide", true}}), nil);
    const auto frame = translatePanel().frame();
    EXPECT_EQ(frame.size, wide);
    EXPECT_DOUBLE_EQ(frame.midX(), compact.midX());
    call("translateSetPanelWide", Map{});
    EXPECT_EQ(translatePanel().frame(), frame);
    translatePanel().setFrame({{frame.origin.x + 900, frame.origin.y}, frame.size});
    call("translateSetPanelWide", Map{{"wide", false}});
    EXPECT_LE(translatePanel().frame().origin.x + translatePanel().frame().size.width,
              visible.size.width);
    call("translateHidePanel");
    call("translateSetPanelWide", Map{{"wide", true}});
    EXPECT_NE(translatePanel().frame().size, wide) << "hidden it does not change";
  }
  ignoreLog("[Translate]");
}

TEST_F(TranslatePanelTest, TheCardHasOneBackgroundThatGoesWithItsFrame) {
  open();
  const auto frames = [](List rects) {
    return Map{{"rects", std::move(rects)}, {"cornerRadius", 18.0}};
  };
  const auto card = Map{{"x", 10}, {"y", 20.0}, {"w", 300}, {"h", 100}};
  call("translateUpdateCardFrames", frames({Value(card), Value(card)}));
  const auto& views = desktop.engines.viewController("translate_engine")->effectViews();
  ASSERT_EQ(views.size(), 1u);
  EXPECT_EQ(views[0]->frame, (Rect{{10, 460}, {300, 100}}));
  EXPECT_FALSE(views[0]->isHidden);
  for (const auto& malformed :
       {Value(frames({})), Value(frames({Value(Map{{"x", 1}})})), Value(3)}) {
    views[0]->isHidden = false;
    EXPECT_EQ(call("translateUpdateCardFrames", malformed), nil);
    EXPECT_TRUE(views[0]->isHidden);
  }
}

TEST_F(TranslatePanelTest, GenerationIsRelayedBothWays) {
  const auto request = Map{{"text", "a"}, {"direction", "es-en"}, {"tone", "formal"}, {"gen", 7}};
  EXPECT_EQ(call("translateRequest", request), nil);
  EXPECT_EQ(call("translateCancel"), nil);
  EXPECT_THAT(mainScreen().takeCalls(), ElementsAre(MethodCall{"headlessTranslate", request},
                                                    MethodCall{"headlessTranslateCancel", {}}));
  for (const auto& wrong : {Value(Map{{"text", "a"}}), Value(Map{{"text", 3}, {"direction", "x"}}),
                            Value("text"), Value()}) {
    EXPECT_EQ(
        call("translateRequest", wrong),
        MethodReply(MethodError{"BAD_ARGS", "translateRequest requiere {text, direction}", {}}));
  }

  auto& main = mainScreen();
  main.call("headlessTranslateToken", Map{{"token", "ho"}, {"gen", 6}});
  main.call("headlessTranslateToken", Map{{"token", "la"}, {"gen", std::int64_t{7}}});
  for (const auto& wrong :
       {Value(Map{{"token", "x"}}), Value(Map{{"token", 1}, {"gen", 7}}), Value()})
    EXPECT_EQ(main.call("headlessTranslateToken", wrong), nil);
  main.call("headlessTranslateDone", Map{{"gen", 7}});
  main.call("headlessTranslateDone", Map{});
  main.call("headlessTranslateError", Map{{"gen", 8}});
  main.call("headlessTranslateError", Map{{"gen", 9}, {"message", "no"}, {"code", "offline"}});
  main.call("headlessShowEditorText", Map{{"text", "note"}});
  main.call("headlessDismissPanel");
  const std::vector<MethodCall> relayed = {
      {"translateToken", Map{{"token", "ho"}, {"gen", 6}}},
      {"translateToken", Map{{"token", "la"}, {"gen", 7}}},
      {"translateDone", Map{{"gen", 7}}},
      {"translateError", Map{{"message", "Translation failed. Try again."}, {"gen", 8}}},
      {"translateError", Map{{"message", "no"}, {"gen", 9}, {"code", "offline"}}},
      {"translateShow", Map{{"text", "note"}, {"mode", "translate"}, {"source", "editor"}}},
      {"translateDismiss", {}}};
  EXPECT_EQ(translateScreen().takeCalls(), relayed);
}

TEST_F(TranslatePanelTest, AnswersItsOtherMethods) {
  EXPECT_EQ(call("translateCheckAccessibility"), MethodReply(Value(true)));
  desktop.accessibility.setTrusted(false);
  EXPECT_EQ(call("translateRequestAccessibility"), MethodReply(Value(false)));
  EXPECT_EQ(call("translatePaste"), MethodReply(Value("notTrusted")));
  EXPECT_EQ(call("openUrl", "https://example.org"), nil);
  EXPECT_EQ(call("translateSomethingElse"), MethodReply(NotImplemented{}));
}

}  // namespace
}  // namespace zephyx
