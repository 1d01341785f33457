#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QtCore/QAbstractItemModel>
#include <QtCore/QFile>
#include <QtGui/QMouseEvent>
#include <fstream>

#include "Screens/ClipboardScreenController.h"
#include "Tests/Desktop/FullDisk.h"
#include "Tests/Screens/TestWorld.h"

namespace zephyx {
namespace {

class ClipboardScreenTest : public testing::Test {
 protected:
  void capture(const Map& message) {
    EXPECT_EQ(world.call("clipboardEntryCaptured", message), MethodReply(Value()));
  }
  void captureTexts(std::initializer_list<const char*> texts) {
    for (const auto* text : texts) capture(capturedText(text));
  }
  void show() {
    ASSERT_TRUE(world.showPicture(560, 720));
    world.call("clipboardPanelShown");
  }
  QObject* list() { return world.child("entries"); }
  ClipboardScreenController* controller() { return world.controller<ClipboardScreenController>(); }
  QAbstractItemModel* entries() { return controller()->entries(); }
  QString shown(int row) {
    return entries()->index(row, 0).data(ClipboardModel::previewRole).toString();
  }
  bool waitForRows(int rows) {
    return waitFor([&] { return entries()->rowCount() == rows; });
  }

  TestWorld world{"clipboardMain"};
};

TEST_F(ClipboardScreenTest, DropsMessagesThatAreNoEntryAndReadsWhatIsSoundInTheOthers) {
  for (const Value& message :
       {Value(), Value(3), Value(List{"text"}), Value(Map{{"text", "no type"}}),
        Value(Map{{"type", 4}, {"text", "no type"}}), Value(Map{{"type", ""}})})
    EXPECT_EQ(world.call("clipboardEntryCaptured", message), MethodReply(Value()));
  capture({{"type", "text"}, {"text", 17}, {"width", "wide"}, {"sourceAppName", List{}}});
  capture({{"type", "image"}, {"thumbnailPath", "/nowhere.png"}, {7, "seven"}});
  show();
  ASSERT_TRUE(waitForRows(2));
  EXPECT_EQ(shown(0), "Image");
  EXPECT_EQ(world.call("clipboardSomethingElse"), MethodReply(NotImplemented{}));
}

TEST_F(ClipboardScreenTest, EnterWritesTheEntryToThePasteboardAndThenPastes) {
  std::string longText = "long ";
  while (longText.size() < 3'000'000) longText += longText;
  const std::tuple<Map, bool, Map> cases[] = {
      {{{"type", "text"}, {"text", "words"}},
       false,
       {{"type", "text"}, {"plainText", false}, {"text", "words"}}},
      {{{"type", "text"}, {"text", longText}},
       true,
       {{"type", "text"}, {"plainText", true}, {"text", longText}}},
      {{{"type", "url"}, {"text", "https://a.b"}},
       true,
       {{"type", "url"}, {"plainText", true}, {"text", "https://a.b"}}},
      {{{"type", "image"}, {"imageBlobPath", "/i.png"}},
       false,
       {{"type", "image"}, {"plainText", false}, {"imageBlobPath", "/i.png"}}},
      {{{"type", "file"}, {"text", "f"}, {"filePath", "/d/f"}},
       false,
       {{"type", "file"}, {"plainText", false}, {"text", "f"}, {"filePath", "/d/f"}}},
      {{{"type", "file"}, {"text", "f"}, {"filePath", "/d/f"}},
       true,
       {{"type", "text"}, {"plainText", true}, {"text", "/d/f"}, {"filePath", "/d/f"}}},
  };
  world.replies["clipboardPaste"] = Value("pasted");
  show();
  for (const auto& [captured, plainText, written] : cases) {
    capture(captured);
    world.call("clipboardPanelShown");
    world.calls.clear();
    world.press(Qt::Key_Return, plainText ? Qt::ShiftModifier : Qt::NoModifier);
    ASSERT_TRUE(world.waitForCall("clipboardPaste"));
    ASSERT_EQ(world.calls.size(), 2U);
    EXPECT_EQ(world.calls[0].method, "clipboardSetPasteboard");
    EXPECT_EQ(world.calls[0].arguments, Value(written));
    EXPECT_EQ(world.calls[1].arguments, Value(Map{}));
  }
}

TEST_F(ClipboardScreenTest, PastesWhatASearchFindsThoughEnterComesBeforeIt) {
  captureTexts({"alpha", "beta", "gamma"});
  show();
  world.type("bet");
  world.press(Qt::Key_Return);
  ASSERT_TRUE(world.waitForCall("clipboardPaste"));
  EXPECT_EQ(world.argument("clipboardSetPasteboard", "text"), Value("beta"));
  EXPECT_EQ(entries()->rowCount(), 1);
}

TEST_F(ClipboardScreenTest,
       AKeyThatComesBeforeTheHostsWordMeansWhatWasCopiedWhileThePanelWasHidden) {
  captureTexts({"old"});
  show();
  world.window()->hide();
  captureTexts({"newer", "newest"});
  world.window()->show();
  ASSERT_TRUE(waitFor([&] { return world.window()->isExposed(); }));
  world.window()->grabWindow();
  world.press(Qt::Key_Return);
  ASSERT_TRUE(world.waitForCall("clipboardPaste"));
  EXPECT_EQ(world.argument("clipboardSetPasteboard", "text"), Value("newest"));
  world.replies["clipboardPaste"] = Value("pasted");

  world.window()->hide();
  world.window()->show();
  world.type("new");
  world.press(Qt::Key_Space, Qt::ControlModifier);
  world.call("clipboardPanelShown");
  EXPECT_EQ(controller()->searchText(), "new");
  EXPECT_TRUE(world.waitForCall("clipboardQuickLook"));
}

TEST_F(ClipboardScreenTest, SaysThatItMayNotPasteForAsLongAsThatIsSo) {
  captureTexts({"text"});
  show();
  world.replies["clipboardPaste"] = Value("notTrusted");
  world.press(Qt::Key_Return);
  ASSERT_TRUE(waitFor([&] { return !controller()->mayPaste(); }));
  const auto cards = [&] {
    return world.argument("clipboardUpdateCardFrames", "rects").asList()->size();
  };
  ASSERT_TRUE(waitFor([&] { return cards() == 3; })) << "the row has a background of its own";

  world.replies["clipboardCheckAccessibility"] = Value(true);
  world.call("clipboardPanelShown");
  ASSERT_TRUE(waitFor([&] { return controller()->mayPaste() && cards() == 2; }));
  world.replies["clipboardCheckAccessibility"] = Value(false);
  world.call("clipboardPanelShown");
  EXPECT_TRUE(waitFor([&] { return !controller()->mayPaste(); }));
}

TEST_F(ClipboardScreenTest, BeginsAnewWheneverThePanelIsShown) {
  captureTexts({"one", "two", "three"});
  show();
  ASSERT_TRUE(world.waitForCall("clipboardUpdateCardFrames"));
  world.press(Qt::Key_Down);
  world.type("o");
  world.press(Qt::Key_Tab);
  ASSERT_TRUE(waitForRows(2));
  EXPECT_EQ(controller()->filter(), "text");
  const auto frames = world.callsOf("clipboardUpdateCardFrames");
  world.calls.clear();

  world.call("clipboardPanelShown");
  ASSERT_TRUE(waitForRows(3));
  EXPECT_EQ(controller()->searchText(), "");
  EXPECT_EQ(controller()->filter(), "");
  EXPECT_EQ(list()->property("currentIndex"), 0);
  EXPECT_TRUE(world.waitForCall("clipboardCheckAccessibility"));
  ASSERT_TRUE(world.waitForCall("clipboardUpdateCardFrames")) << "the host hid its backgrounds";
  EXPECT_EQ(world.calls[0], frames.back());
  const Map& first = *frames.back().arguments.asMap()->find("rects")->asList()->front().asMap();
  for (const auto* key : {"x", "y", "w", "h"})
    EXPECT_TRUE(std::holds_alternative<double>(first.find(key)->storage())) << key;
}

TEST_F(ClipboardScreenTest, KeysMoveTheSelectionAndActOnIt) {
  captureTexts({"one", "two"});
  capture({{"type", "url"}, {"text", "https://a.b"}});
  capture({{"type", "file"}, {"text", "f"}, {"filePath", "/d/f"}});
  show();
  const auto current = [&] { return list()->property("currentIndex").toInt(); };
  world.press(Qt::Key_E, Qt::ControlModifier);
  ASSERT_TRUE(world.waitForCall("clipboardShowInFinder"));
  EXPECT_EQ(world.calls.back().arguments, Value("/d/f"));
  world.press(Qt::Key_Down);
  world.press(Qt::Key_O, Qt::ControlModifier);
  ASSERT_TRUE(world.waitForCall("clipboardOpenUrl"));
  EXPECT_EQ(world.calls.back().arguments, Value("https://a.b"));

  world.press(Qt::Key_End);
  EXPECT_EQ(current(), 3);
  world.press(Qt::Key_Down);
  EXPECT_EQ(current(), 3);
  world.press(Qt::Key_P, Qt::ControlModifier);
  ASSERT_TRUE(
      waitFor([&] { return entries()->index(3, 0).data(ClipboardModel::pinnedRole).toBool(); }));
  world.press(Qt::Key_PageUp);
  EXPECT_EQ(current(), 0);
  world.press(Qt::Key_Delete);
  ASSERT_TRUE(waitForRows(3));
  EXPECT_EQ(current(), 0);

  world.press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
  world.press(Qt::Key_Escape);
  EXPECT_EQ(entries()->rowCount(), 3) << "Escape takes the question back";
  world.press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
  world.press(Qt::Key_Return);
  ASSERT_TRUE(waitForRows(1));
  EXPECT_EQ(shown(0), "one");
  EXPECT_TRUE(world.callsOf("clipboardSetPasteboard").empty());
}

TEST_F(ClipboardScreenTest, EscapeClearsTheSearchAndThenHidesThePanel) {
  captureTexts({"one"});
  show();
  world.type("x");
  ASSERT_TRUE(waitForRows(0));
  world.press(Qt::Key_Escape);
  ASSERT_TRUE(waitForRows(1));
  EXPECT_TRUE(world.callsOf("clipboardHidePanel").empty());
  world.press(Qt::Key_Escape);
  EXPECT_TRUE(world.waitForCall("clipboardHidePanel"));
}

TEST_F(ClipboardScreenTest, SpacePreviewsFilesAsTheyAreAndTextsFromAPrivateFile) {
  const std::string image = world.folder() + "/image.png";
  capture({{"type", "image"}, {"imageBlobPath", image}});
  std::ofstream(image) << "png";
  show();
  world.press(Qt::Key_Space, {}, " ");
  ASSERT_TRUE(world.waitForCall("clipboardQuickLook")) << controller()->message().toStdString();
  EXPECT_EQ(world.calls.back().arguments, Value(image));

  captureTexts({"words & more"});
  world.press(Qt::Key_Home);
  world.type("or");
  world.press(Qt::Key_Space, Qt::ControlModifier, " ");
  ASSERT_TRUE(world.waitForCall("clipboardQuickLook", 2));
  const std::string path = *world.calls.back().arguments.asString();
  std::ifstream file(path);
  EXPECT_EQ(std::string(std::istreambuf_iterator<char>(file), {}), "words & more");
  struct stat status = {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777U, 0600U);
  world.call("clipboardPanelShown");
  EXPECT_NE(::stat(path.c_str(), &status), 0) << "no copy of a text is left lying";

  capture({{"type", "file"}, {"filePath", "/gone"}, {"text", "gone"}});
  world.press(Qt::Key_Home);
  world.press(Qt::Key_Space, {}, " ");
  EXPECT_TRUE(waitFor([&] { return !controller()->message().isEmpty(); }));
  EXPECT_EQ(world.callsOf("clipboardQuickLook").size(), 2U);
}

TEST_F(ClipboardScreenTest, TheMousePastesRowsAndDragsThePanelByItsHeader) {
  captureTexts({"below", "above"});
  show();
  const auto mouse = [&](QEvent::Type type, QPointF at, Qt::MouseButtons buttons) {
    QMouseEvent event(type, at, at, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton,
                      buttons, {});
    QCoreApplication::sendEvent(world.window(), &event);
  };
  mouse(QEvent::MouseButtonPress, {200, 30}, Qt::LeftButton);
  for (int step = 1; step < 5; ++step)
    mouse(QEvent::MouseMove, {200.0 + 5 * step, 30}, Qt::LeftButton);
  mouse(QEvent::MouseButtonRelease, {220, 30}, Qt::NoButton);
  world.click({250, 240});
  ASSERT_TRUE(world.waitForCall("clipboardPaste"));
  EXPECT_EQ(world.argument("clipboardSetPasteboard", "text"), Value("below"));
  EXPECT_EQ(world.callsOf("clipboardStartWindowDrag").size(), 1U);
}

TEST_F(ClipboardScreenTest, LoadsLongHistoriesAsTheyAreScrolled) {
  for (int i = 0; i < 150; ++i) capture(capturedText(std::to_string(i)));
  world.stopProgram();
  world.startProgram();
  show();
  ASSERT_TRUE(waitFor([&] { return entries()->rowCount() > 0; }));
  EXPECT_LT(entries()->rowCount(), 150);
  ASSERT_TRUE(waitFor([&] {
    world.press(Qt::Key_End);
    return entries()->rowCount() == 150;
  }));
  EXPECT_EQ(shown(149), "0");
}

TEST_F(ClipboardScreenTest, KeepsAsManyEntriesAsTheSettingSays) {
  world.defaults.setString("flutter.clipboardHistoryLimit", "12");
  for (int i = 0; i < 20; ++i) capture(capturedText(std::to_string(i)));
  EXPECT_EQ(entries()->rowCount(), 12);
  EXPECT_EQ(shown(11), "8");
}

TEST_F(ClipboardScreenTest, StoresWhatArrivedThoughTheProgramEndsBeforeItsAnswer) {
  captureTexts({"first"});
  show();
  captureTexts({"second"});
  ASSERT_TRUE(waitForRows(2));
  EXPECT_EQ(shown(0), "second");
  const std::string folder = world.folder();
  QMetaObject::invokeMethod(
      QCoreApplication::instance(), [this] { world.stopProgram(); }, Qt::QueuedConnection);
  ASSERT_TRUE(waitFor([&] { return !world.program(); }));
  EXPECT_EQ(ClipboardStore(folder).page({}, ClipboardStore::newest, 9).size(), 2U);
  world.startProgram();
  ASSERT_TRUE(waitForRows(2));
  EXPECT_EQ(shown(0), "second");
}

TEST_F(ClipboardScreenTest, SaysThatADamagedHistoryWasSetAside) {
  captureTexts({"lost"});
  world.stopProgram();
  QFile::remove(QString::fromStdString(world.folder() + "/clipboard_history.sqlite-wal"));
  std::ofstream(world.folder() + "/clipboard_history.sqlite") << std::string(3000, '?');
  world.startProgram();
  ASSERT_TRUE(waitFor([&] { return !controller()->message().isEmpty(); }));
  show();
  EXPECT_TRUE(controller()->message().contains("damaged"));
  world.call("clipboardPanelShown");
  EXPECT_EQ(controller()->message(), "") << "once seen";
  captureTexts({"new"});
  EXPECT_EQ(entries()->rowCount(), 1);
}

TEST_F(ClipboardScreenTest, AFullDiskIsSaidInThePanelAndCostsOnlyWhatIsCopiedMeanwhile) {
  captureTexts({"before"});
  {
    const FullDisk full;
    for (const auto* text : {"lost", "lost too"}) {
      const auto reply = world.call("clipboardEntryCaptured", capturedText(text));
      EXPECT_TRUE(std::holds_alternative<MethodError>(reply));
    }
  }
  captureTexts({"after"});
  show();
  EXPECT_TRUE(controller()->message().contains("disk may be full"));
  ASSERT_TRUE(waitForRows(2));
  EXPECT_EQ(shown(0), "after");
  EXPECT_EQ(shown(1), "before");
}

}  // namespace
}  // namespace zephyx
