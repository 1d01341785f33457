#include <gtest/gtest.h>

#include "Screens/TranslateScreenController.h"
#include "Tests/Screens/TestWorld.h"

namespace zephyx {
namespace {

class TranslateScreenTest : public testing::Test {
 protected:
  TranslateScreenController* screen() { return world.controller<TranslateScreenController>(); }
  void show(const std::string& text, const char* mode = "translate",
            const char* source = "external") {
    world.call("translatePanelShown");
    world.call("translateShow", Map{{"text", text}, {"mode", mode}, {"source", source}});
  }
  std::int64_t gen() {
    EXPECT_TRUE(world.waitForCall("translateRequest"));
    return world.argument("translateRequest", "gen").asInteger().value_or(-1);
  }
  void token(const char* text, std::int64_t number) {
    world.call("translateToken", Map{{"token", text}, {"gen", number}});
  }
  void finish(const char* text) {
    token(text, gen());
    world.call("translateDone", Map{{"gen", gen()}});
  }
  bool shows(const char* pane, const QString& text) {
    return waitFor([&] {
      return world.child(pane)->property("edit").value<QObject*>()->property("text") == text;
    });
  }
  std::string phase() { return screen()->phase().toStdString(); }

  TestWorld world{"translateMain"};
};

TEST_F(TranslateScreenTest, ShowsTheTextReportsReadyAndStreamsTheResult) {
  ASSERT_TRUE(world.showPicture(620, 580));
  show("Hola", "improve");
  ASSERT_TRUE(world.waitForCall("translateRequest"));
  ASSERT_TRUE(world.waitForCall("translatePanelReady"));
  EXPECT_EQ(world.callsOf("translateRequest").back().arguments, Value(Map{{"text", "Hola"},
                                                                          {"direction", "auto-en"},
                                                                          {"mode", "improve"},
                                                                          {"tone", "neutral"},
                                                                          {"gen", gen()}}));
  EXPECT_TRUE(shows("source", "Hola"));
  const auto first = gen();
  token("Hel", first);
  token("lo", first);
  EXPECT_TRUE(shows("result", "Hello"));

  show("Adiós");
  ASSERT_TRUE(world.waitForCall("translateRequest", 2));
  EXPECT_GT(gen(), first);
  EXPECT_EQ(world.callsOf("translateCancel").size(), 1U);
  token(" again", first);
  world.call("translateDone", Map{{"gen", first}});
  world.call("translateError", Map{{"message", "late"}, {"gen", first}});
  EXPECT_EQ(phase(), "generating");
  finish("Bye");
  EXPECT_TRUE(shows("result", "Bye"));
  token("!", gen());
  EXPECT_EQ(screen()->result(), "Bye") << "it is done";
  for (const Value& bad : {Value(), Value("x"), Value(Map{{"token", 3}, {"gen", "one"}})})
    EXPECT_EQ(world.call("translateToken", bad), MethodReply(Value()));
  EXPECT_EQ(world.call("translateNothingKnown"), MethodReply(NotImplemented{}));
}

TEST_F(TranslateScreenTest, EnterPutsTheResultOnTheClipboardAndPastesIt) {
  ASSERT_TRUE(world.showPicture(620, 580));
  show(" Hola\n");
  token("\nHel", gen());
  world.press(Qt::Key_Return);
  EXPECT_TRUE(world.writtenTexts.empty()) << "half a result is not pasted";
  finish("lo ");
  world.replies["translatePaste"] = Value("notTrusted");
  world.press(Qt::Key_Return);
  ASSERT_TRUE(world.waitForCall("translatePaste"));
  EXPECT_EQ(world.writtenTexts, std::vector<std::string>{" Hello\n"})
      << "with the white space that the selection had";
  EXPECT_TRUE(waitFor([&] { return !screen()->mayPaste(); }));

  world.press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(world.writtenTexts.back(), "Hello");
  world.press(Qt::Key_Return, Qt::ControlModifier);
  ASSERT_TRUE(world.waitForCall("translateHidePanel"));
  EXPECT_EQ(world.argument("translateAcceptToEditor", "text"), Value(" Hello\n"));
  EXPECT_EQ(world.calls[world.calls.size() - 2].method, "translateAcceptToEditor");

  show("from a note", "spelling", "editor");
  finish("From a note");
  world.press(Qt::Key_Return);
  ASSERT_TRUE(world.waitForCall("translateAcceptToEditor", 2)) << "goes back where it came from";
  EXPECT_EQ(world.callsOf("translatePaste").size(), 1U);
}

TEST_F(TranslateScreenTest, EscapeStopsThenDismissesAndHidingStopsToo) {
  ASSERT_TRUE(world.showPicture(620, 580));
  show("Hola");
  token("Hel", gen());
  world.press(Qt::Key_Escape);
  ASSERT_TRUE(world.waitForCall("translateCancel"));
  EXPECT_EQ(phase(), "stopped");
  EXPECT_TRUE(world.callsOf("translateHidePanel").empty());
  world.press(Qt::Key_Escape);
  ASSERT_TRUE(world.waitForCall("translateHidePanel"));
  EXPECT_EQ(world.callsOf("translateCancel").size(), 1U);

  show("Hola");
  ASSERT_TRUE(world.waitForCall("translateRequest", 2));
  world.window()->hide();
  ASSERT_TRUE(world.waitForCall("translateCancel", 2));
  world.call("translateShow", Map{{"text", "late"}, {"mode", "translate"}, {"source", "editor"}});
  EXPECT_EQ(world.callsOf("translateRequest").size(), 2U) << "nobody would see it";

  world.window()->show();
  world.press(Qt::Key_Return);
  show("Hola");
  EXPECT_EQ(world.callsOf("translateRequest").size(), 3U) << "the key met no earlier session";
  world.call("translateDismiss");
  EXPECT_TRUE(world.waitForCall("translateHidePanel", 2));
  EXPECT_TRUE(world.waitForCall("translateCancel", 3));
}

TEST_F(TranslateScreenTest, BringsTheLastSessionBack) {
  world.call("translateRestoreLast", Map{{"origin", "external"}});
  world.call("translatePanelShown");
  EXPECT_EQ(phase(), "empty") << "there is none yet";
  ASSERT_TRUE(world.showPicture(620, 580));
  show("Hola", "spelling");
  finish("Hello");
  show("");
  EXPECT_EQ(phase(), "empty");
  EXPECT_EQ(world.callsOf("translateRequest").size(), 1U);
  world.calls.clear();

  for (int time = 0; time < 2; ++time) {
    world.call("translateRestoreLast", Map{{"origin", "editor"}});
    world.call("translatePanelShown");
    ASSERT_TRUE(world.waitForCall("translatePanelReady", time + 1U));
    EXPECT_EQ(phase(), "done");
    EXPECT_EQ(screen()->mode(), "spelling");
    EXPECT_TRUE(screen()->fromEditor());
    EXPECT_TRUE(shows("source", "Hola"));
    EXPECT_TRUE(shows("result", "Hello"));
    EXPECT_TRUE(world.callsOf("translateRequest").empty());
  }
}

TEST_F(TranslateScreenTest, AnErrorIsShownAndEnterTriesAgain) {
  ASSERT_TRUE(world.showPicture(620, 580));
  show("Hola");
  world.call("translateError", Map{{"message", "Lost."}, {"code", "interrupted"}, {"gen", gen()}});
  EXPECT_EQ(screen()->errorMessage(), "Lost.");
  EXPECT_EQ(screen()->errorCode(), "interrupted");
  world.press(Qt::Key_Return);
  ASSERT_TRUE(world.waitForCall("translateRequest", 2));
  EXPECT_EQ(screen()->errorMessage(), "");
  world.call("translateError", Map{{"message", "No code."}, {"gen", gen()}});
  EXPECT_EQ(screen()->errorCode(), "");
  EXPECT_EQ(phase(), "failed");
}

TEST_F(TranslateScreenTest, AnotherLanguageToneOrTextRunsAgainAndChoicesAreRemembered) {
  ASSERT_TRUE(world.showPicture(620, 580));
  show("Hello");
  finish("Hello");
  world.press(Qt::Key_2, Qt::ControlModifier);
  ASSERT_TRUE(world.waitForCall("translateRequest", 2));
  EXPECT_EQ(world.argument("translateRequest", "direction"), Value("auto-es"));
  finish("Hola");
  screen()->setText("Hello!");
  world.press(Qt::Key_Return);
  ASSERT_TRUE(world.waitForCall("translateRequest", 3)) << "the result is of another text";
  EXPECT_EQ(world.argument("translateRequest", "text"), Value("Hello!"));

  show("Hello", "improve");
  world.press(Qt::Key_4, Qt::ControlModifier);
  ASSERT_TRUE(world.waitForCall("translateRequest", 5));
  EXPECT_EQ(world.argument("translateRequest", "tone"), Value("concise"));
  world.stopProgram();
  world.startProgram();
  show("Hello");
  ASSERT_TRUE(world.waitForCall("translateRequest", 6));
  EXPECT_EQ(world.argument("translateRequest", "tone"), Value("concise"));
  EXPECT_EQ(world.argument("translateRequest", "direction"), Value("auto-es"));
}

TEST_F(TranslateScreenTest, TheTextsStayWholeWhateverTheKeyboardGoesThrough) {
  ASSERT_TRUE(world.showPicture(620, 580));
  show("one\ntwo");
  finish("uno\ndos");
  for (int step = 0; step < 20; ++step) world.press(Qt::Key_Tab);
  EXPECT_TRUE(shows("source", "one\ntwo"));

  auto* source = world.child("source")->property("edit").value<QQuickItem*>();
  source->forceActiveFocus();
  QMetaObject::invokeMethod(source, "select", Q_ARG(int, 0), Q_ARG(int, 3));
  world.press(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(world.writtenTexts, std::vector<std::string>{"one"});
  world.press(Qt::Key_Return, Qt::ShiftModifier);
  EXPECT_TRUE(shows("source", "\n\ntwo")) << "a new line in the text";
  EXPECT_TRUE(world.callsOf("translatePaste").empty());
}

TEST_F(TranslateScreenTest, ReportsItsCardAndAsksForItsSize) {
  ASSERT_TRUE(world.showPicture(620, 580));
  show("Hola");
  ASSERT_TRUE(world.waitForCall("translateUpdateCardFrames"));
  const auto width = [&] {
    const auto rects = world.argument("translateUpdateCardFrames", "rects");
    return rects.asList()->size() == 1
               ? rects.asList()->front().asMap()->find("w")->asNumber().value_or(0)
               : 0;
  };
  EXPECT_EQ(width(), 592);
  world.press(Qt::Key_B, Qt::ControlModifier);
  ASSERT_TRUE(world.waitForCall("translateSetPanelWide"));
  EXPECT_EQ(world.argument("translateSetPanelWide", "wide"), Value(true));
  world.window()->contentItem()->childItems().front()->setSize({1060, 640});
  EXPECT_TRUE(waitFor([&] { return width() == 1032; }));

  const auto frames = world.callsOf("translateUpdateCardFrames").size();
  show("Otra vez");
  EXPECT_TRUE(world.waitForCall("translateSetPanelWide", 2)) << "a new showing begins compact";
  EXPECT_TRUE(world.waitForCall("translateUpdateCardFrames", frames + 1))
      << "the host hid its background";
  world.press(Qt::Key_B, Qt::ControlModifier);
  ASSERT_TRUE(world.waitForCall("translateSetPanelWide", 3));
  EXPECT_EQ(world.argument("translateSetPanelWide", "wide"), Value(false));
}

}  // namespace
}  // namespace zephyx
