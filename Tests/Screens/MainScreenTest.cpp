#include <gtest/gtest.h>

#include <QtCore/QMimeData>
#include <QtGui/QGuiApplication>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLineEdit>
#include <fstream>

#include "Screens/MainScreenController.h"
#include "Tests/Desktop/FullDisk.h"
#include "Tests/Screens/TestWorld.h"

namespace zephyx {
namespace {

class MainScreenTest : public testing::Test {
 protected:
  MainScreenController* screen() { return world.controller<MainScreenController>(); }
  void write(const QString& text) {
    screen()->newNote();
    screen()->setText(text);
    screen()->save();
  }
  QStringList titles() {
    QStringList found;
    for (int row = 0; row < screen()->notes()->rowCount(); ++row)
      found << screen()->notes()->index(row).data(NotesModel::titleRole).toString();
    found.sort();  // notes of the same moment stand in no certain order
    return found;
  }
  QString file(const char* name) const {
    return QString::fromStdString(world.folder()) + '/' + QLatin1String(name);
  }
  QFileDialog* dialog() {
    for (QWidget* widget : QApplication::topLevelWidgets())
      if (auto* dialog = qobject_cast<QFileDialog*>(widget); dialog && dialog->isVisible())
        return dialog;
    return nullptr;
  }
  /// Answers the question for a file.
  void choose(const QString& path) {
    ASSERT_TRUE(waitFor([&] { return dialog() != nullptr; }));
    dialog()->findChild<QLineEdit*>("fileNameEdit")->setText(path);
    QMetaObject::invokeMethod(dialog(), "accept");
    ASSERT_TRUE(waitFor([&] { return dialog() == nullptr; }));
  }

  TestWorld world{"main"};
};

TEST_F(MainScreenTest, SavesWhatIsTypedSoonAndShowsItAgain) {
  ASSERT_TRUE(world.showPicture(900, 600));
  world.type("milk");
  ASSERT_TRUE(waitFor([&] { return titles() == QStringList{"milk"}; }));
  world.type("s");
  world.stopProgram();
  world.startProgram();
  EXPECT_EQ(titles(), QStringList{"milks"}) << "the end of the program saves";
  EXPECT_EQ(screen()->text(), "milks");
}

TEST_F(MainScreenTest, SaysWhatTheDesktopLacksUntilItHasItOrTheUserHasReadIt) {
  world.desktop.insert("hasTray", true);
  world.desktop.insert("waylandSession", true);
  world.replies["hotkeysGet"] = Value(
      List{Map{{"id", 1}, {"modifiers", 0x300}, {"display", "⇧⌘Space"}, {"isDefault", true}}});
  ASSERT_TRUE(world.showPicture(900, 600));
  const auto cards = [&] {
    QStringList texts;
    QObject* notices = world.child("notices");
    for (int at = 0; at < notices->property("count").toInt(); ++at) {
      QQuickItem* card = nullptr;
      QMetaObject::invokeMethod(notices, "itemAt", Q_RETURN_ARG(QQuickItem*, card), Q_ARG(int, at));
      texts << card->property("text").toString();
    }
    return texts;
  };
  const auto become = [&](qsizetype count) {
    return waitFor([&] { return cards().size() == count; });
  };
  EXPECT_TRUE(become(1));
  EXPECT_TRUE(cards().value(0).contains("X11"));
  world.desktop.insert("hasTray", false);
  ASSERT_TRUE(become(2));
  EXPECT_TRUE(waitFor([&] { return cards().value(0).contains("press Shift+Super+Space"); }));
  world.desktop.insert("hasTray", true);
  EXPECT_TRUE(become(1));
  screen()->settings()->dismissNotice("wayland");
  EXPECT_TRUE(become(0));
  world.desktop.insert("hasTray", false);
  screen()->settings()->dismissNotice("tray");
  EXPECT_TRUE(become(0));
  world.call("openSettings");
  world.settlePicture();
  EXPECT_EQ(world.child("desktop")->property("count").toInt(), 2) << "the settings keep them";
  world.stopProgram();
  world.startProgram();
  EXPECT_EQ(screen()->settings()->dismissedNotices(), (QStringList{"wayland", "tray"}));
}

TEST_F(MainScreenTest, ANoteThatCannotBeSavedStaysOpenUntilItCan) {
  write("old");
  write("milk");
  {
    const FullDisk full;
    screen()->setText("milk and bread");
    screen()->openNote(1);
    EXPECT_EQ(screen()->text(), "milk and bread");
    EXPECT_TRUE(screen()->message().contains("disk may be full"));
    screen()->newNote();
    EXPECT_EQ(screen()->text(), "milk and bread");
  }
  screen()->openNote(1);
  EXPECT_EQ(screen()->text(), "old");
  EXPECT_EQ(titles(), (QStringList{"milk and bread", "old"}));
  EXPECT_EQ(screen()->message(), "The note is saved.");
}

TEST_F(MainScreenTest, FindsDeletesAndBringsBackNotes) {
  write("Äpfel\nred");
  write("Birnen\nGREEN");
  screen()->setSearchText("äPF");
  EXPECT_EQ(titles(), QStringList{"Äpfel"});
  screen()->openNote(0);
  screen()->deleteNote();
  EXPECT_TRUE(titles().isEmpty());
  ASSERT_TRUE(screen()->canUndo());
  screen()->undoDelete();
  EXPECT_EQ(titles(), (QStringList{"Birnen", "Äpfel"}));
  EXPECT_EQ(screen()->text(), "Äpfel\nred");
  screen()->setText(" ");
  screen()->openNote(screen()->currentRow() == 0 ? 1 : 0);
  EXPECT_EQ(titles(), QStringList{"Birnen"}) << "a note left without text is not kept";
}

TEST_F(MainScreenTest, PastesTheClipboardsTextAtTheCursor) {
  const auto becomes = [this](const QString& text) {
    return waitFor([&] { return screen()->text() == text; });
  };
  world.clipboardText = "early ";
  world.call("pasteIntoEditor");
  EXPECT_TRUE(becomes("early ")) << "before there is a picture";

  ASSERT_TRUE(world.showPicture(900, 600));
  world.press(Qt::Key_End);
  world.type("ac");
  world.press(Qt::Key_Left);
  world.clipboardText = "b\nb";
  world.call("openSettings");
  world.call("pasteIntoEditor");
  EXPECT_TRUE(becomes("early ab\nbc"));
  EXPECT_FALSE(screen()->showsSettings());
  world.press(Qt::Key_A, Qt::ControlModifier);
  world.clipboardText = "all";
  world.press(Qt::Key_V, Qt::ControlModifier);
  EXPECT_TRUE(becomes("all"));

  world.clipboardText = std::nullopt;
  world.call("pasteIntoEditor");
  world.clipboardText = std::string(3'000'000, 'x');
  for (const bool byKey : {false, true}) {
    screen()->dismissMessage();
    if (byKey) {
      world.press(Qt::Key_V, Qt::ControlModifier);
    } else {
      world.call("pasteIntoEditor");
    }
    EXPECT_TRUE(waitFor([&] { return !screen()->message().isEmpty(); }));
    EXPECT_EQ(screen()->text(), "all");
  }
}

TEST_F(MainScreenTest, HandsItsTextToTheAiActionsAndTakesTheResult) {
  const auto handedOver = [&](std::size_t number) {
    world.call("headlessCaptureEditor", Map{{"mode", "improve"}});
    EXPECT_TRUE(world.waitForCall("headlessShowEditorText", number));
    return world.callsOf("headlessShowEditorText").back().arguments;
  };
  world.call("headlessAcceptToEditor", Map{{"text", "one\ntwo three"}});
  EXPECT_EQ(titles(), QStringList{"one"}) << "a new note, written at once";
  EXPECT_EQ(handedOver(1), Value(Map{{"text", "one\ntwo three"}, {"mode", "improve"}}));

  ASSERT_TRUE(world.showPicture(900, 600));
  auto* editor = world.child("editor");
  QMetaObject::invokeMethod(editor, "select", Q_ARG(int, 2), Q_ARG(int, 7));
  EXPECT_EQ(handedOver(2), Value(Map{{"text", "e\ntwo"}, {"mode", "improve"}}));
  world.window()->hide();
  world.call("headlessAcceptToEditor", Map{{"text", "ly"}});
  EXPECT_EQ(screen()->text(), "only three") << "over the selection";
  for (const Value& nothing : {Value(), Value(Map{{"text", 3}}), Value(Map{{"text", ""}})})
    EXPECT_EQ(world.call("headlessAcceptToEditor", nothing), MethodReply(Value()));
  EXPECT_EQ(handedOver(3), Value(Map{{"text", "only three"}, {"mode", "improve"}}));
}

TEST_F(MainScreenTest, ExportsAllNotesAndImportsThemOnce) {
  write("One\n\nwith “signs” and \t");
  write("Two");
  EXPECT_EQ(world.call("exportAllNotes"), MethodReply(Value()));
  choose(file("Saved.json"));
  ASSERT_TRUE(QFile::exists(file("Saved.json"))) << screen()->message().toStdString();

  write("Three");
  screen()->openNote(1);
  screen()->deleteNote();
  EXPECT_EQ(world.call("importNotes"), MethodReply(Value()));
  choose(file("Saved.json"));
  EXPECT_EQ(titles(), (QStringList{"One", "Three", "Two"}));
  screen()->importFrom(file("Saved.json"));
  EXPECT_EQ(titles().size(), 3);
}

TEST_F(MainScreenTest, SaysWhyAFileIsNoImportAndKeepsWhatIsThere) {
  write("Kept");
  screen()->setText("Kept, and being edited");
  const char* const contents[] = {"", "{ half", R"({"text":"an object"})",
                                  R"([{"text":"good"},{"title":"no text"}])", "[1]"};
  for (const auto* content : contents) {
    std::ofstream(file("bad.json").toStdString()) << content;
    screen()->dismissMessage();
    screen()->importFrom(file("bad.json"));
    EXPECT_FALSE(screen()->message().isEmpty()) << content;
  }
  screen()->dismissMessage();
  screen()->importFrom(file("missing.json"));
  EXPECT_FALSE(screen()->message().isEmpty());
  screen()->dismissMessage();
  screen()->exportTo(file("no such folder/Notes.json"));
  EXPECT_FALSE(screen()->message().isEmpty());
  EXPECT_EQ(titles(), QStringList{"Kept, and being edited"});
}

TEST_F(MainScreenTest, AnswersTheHostsOtherMessages) {
  EXPECT_EQ(world.call("openSettings"), MethodReply(Value()));
  EXPECT_TRUE(screen()->showsSettings());
  for (const Value& id : {Value(2), Value(std::int64_t{2}), Value("2"), Value()})
    EXPECT_EQ(world.call("shortcutUsed", Map{{"id", id}}), MethodReply(Value()));
  EXPECT_EQ(world.call("shortcutUsed", 2), MethodReply(Value()));
  EXPECT_EQ(world.defaults.string("flutter.shortcutUse.2"), "2");
  EXPECT_EQ(world.call("telemetryEvent", Map{{"name", "x"}}), MethodReply(Value()));
  EXPECT_EQ(world.call("nothingKnown"), MethodReply(NotImplemented{}));
  screen()->quit();
  EXPECT_TRUE(world.waitForCall("quit"));
}

TEST_F(MainScreenTest, KeepsSettingsInTheSharedPreferences) {
  const std::string key = "flutter.localShortcut.openSettings.v1";
  auto& settings = *screen()->settings();
  EXPECT_EQ(settings.historyLimit(), 500);
  settings.setHistoryLimit(2);
  EXPECT_EQ(settings.historyLimit(), ScreenSettings::minimumHistoryLimit);
  world.defaults.setString("flutter.clipboardHistoryLimit", "many");
  EXPECT_EQ(settings.historyLimit(), 500);

  EXPECT_TRUE(settings.isSettingsShortcut(Qt::Key_Comma, Qt::MetaModifier));
  EXPECT_FALSE(settings.recordSettingsShortcut(Qt::Key_K, Qt::ShiftModifier));
  EXPECT_FALSE(settings.recordSettingsShortcut(Qt::Key_Control, Qt::ControlModifier));
  EXPECT_EQ(world.defaults.string(key), std::nullopt);
  ASSERT_TRUE(settings.recordSettingsShortcut(
      Qt::Key_K, static_cast<int>(Qt::MetaModifier | Qt::ShiftModifier)));
  EXPECT_EQ(world.defaults.string(key),
            R"({"alt":false,"control":false,"keyChar":"k","meta":true,"shift":true})");
  EXPECT_EQ(settings.settingsShortcut(), "Super+Shift+K");

  ASSERT_TRUE(world.showPicture(900, 600));
  world.press(Qt::Key_K, Qt::MetaModifier | Qt::ShiftModifier, "K");
  EXPECT_TRUE(screen()->showsSettings());
  EXPECT_EQ(screen()->text(), "") << "the editor has the keyboard";
  world.press(Qt::Key_Escape);
  EXPECT_FALSE(screen()->showsSettings());
  settings.clearSettingsShortcut();
  EXPECT_EQ(world.defaults.string(key), std::nullopt);
}

}  // namespace
}  // namespace zephyx
