#include <gmock/gmock.h>

#include <QtGui/QAccessible>
#include <QtGui/QImage>
#include <set>

#include "Screens/MainScreenController.h"
#include "Tests/Screens/TestWorld.h"

namespace zephyx {
namespace {

/// What is to be seen when a user comes who has no mouse, or does not see.
struct Scene {
  const char* name;
  const char* program;
  QSize size;
  std::function<void(TestWorld&)> prepare;
  /// The names of what can be operated, among others.
  std::vector<std::string> controls;
};

void PrintTo(const Scene& scene, std::ostream* stream) {
  *stream << scene.name;
}

MainScreenController& mainScreen(TestWorld& world) {
  return *world.controller<MainScreenController>();
}

void copyOneOfEach(TestWorld& world) {
  world.call("clipboardEntryCaptured", Map{{"type", "file"}, {"text", "f"}, {"filePath", "/d/f"}});
  world.call("clipboardEntryCaptured", capturedText("words"));
  auto link = capturedText("https://a.b");
  link.set("type", "url");
  world.call("clipboardEntryCaptured", link);
  world.replies["clipboardCheckAccessibility"] = Value(false);
  world.call("clipboardPanelShown");
  world.press(Qt::Key_Home);
}

void translate(TestWorld& world) {
  world.replies["translateCheckAccessibility"] = Value(false);
  world.call("translatePanelShown");
  world.call("translateShow", Map{{"text", "Hola"}, {"mode", "translate"}, {"source", "external"}});
  ASSERT_TRUE(world.waitForCall("translateRequest"));
}

Value generation(TestWorld& world) {
  return *world.callsOf("translateRequest").back().arguments.asMap()->find("gen");
}

void writeNotes(TestWorld& world) {
  for (const char* text : {"one", "two"}) {
    mainScreen(world).newNote();
    mainScreen(world).setText(text);
    mainScreen(world).save();
  }
}

void showSettings(TestWorld& world) {
  world.replies["hotkeysGet"] = Value(List{Map{
      {"id", 5}, {"keyCode", 3}, {"modifiers", 0x900}, {"display", "⌥⌘F"}, {"isDefault", false}}});
  world.replies["agentsVisibilityGet"] =
      Value(List{Map{{"id", "gemini"}, {"name", "Gemini CLI"}, {"visible", false}}});
  world.defaults.setString(
      "flutter.localShortcut.openSettings.v1",
      R"({"keyChar":"k","meta":false,"control":true,"alt":false,"shift":false})");
  mainScreen(world).setShowsSettings(true);
}

const Scene scenes[] = {
    {"History",
     "clipboardMain",
     {560, 720},
     copyOneOfEach,
     {"Type to search", "Clear the history", "All", "Pinned", "Open the link", "Preview", "Pin",
      "Remove", "Update available — version 2.0", "words, now"}},
    {"HistoryQuestion",
     "clipboardMain",
     {560, 720},
     [](TestWorld& world) {
       copyOneOfEach(world);
       world.press(Qt::Key_Delete, Qt::ControlModifier | Qt::ShiftModifier);
     },
     {"Cancel", "Remove all"}},
    {"Answer",
     "translateMain",
     {1060, 640},
     [](TestWorld& world) {
       translate(world);
       world.call("translateToken", Map{{"token", "Hello"}, {"gen", generation(world)}});
       world.call("translateDone", Map{{"gen", generation(world)}});
     },
     {"Selected text", "Result", "Run again (Ctrl R)", "Close (Esc)", "Copy", "Add to note",
      "Paste"}},
    {"Failure",
     "translateMain",
     {620, 580},
     [](TestWorld& world) {
       translate(world);
       world.call("translateError", Map{{"message", "no server"}, {"gen", generation(world)}});
     },
     {"Selected text", "Try again"}},
    {"Notes",
     "main",
     {900, 600},
     writeNotes,
     {"New note", "Search", "Notes", "one", "two", "Menu", "Delete the note", "Note"}},
    {"Message",
     "main",
     {900, 600},
     [](TestWorld& world) {
       writeNotes(world);
       mainScreen(world).deleteNote();
     },
     {"Undo", "Dismiss"}},
    {"Menu",
     "main",
     {900, 600},
     [](TestWorld& world) {
       auto* button = world.child("menu");
       QMetaObject::invokeMethod(button, "clicked");
     },
     {"New note", "Export all notes…", "Import notes…", "Settings", "Quit Zephyx"}},
    {"Settings",
     "main",
     {900, 600},
     showSettings,
     {"Back to the notes", "Address of the AI server", "Model", "Key for the AI server",
      "Change the combination for Improve, now Alt+Super+F",
      "Back to the usual combination for Improve", "Reset all hotkeys",
      "Show Gemini CLI in the menu", "Entries to keep", "Entries to keep: fewer",
      "Entries to keep: more", "Shortcut for the settings: Ctrl+K", "Use the usual shortcut"}},
};

class AccessibilityTest : public testing::TestWithParam<Scene> {
 protected:
  static std::string nameOf(QAccessibleInterface& item) {
    // The toolkit gives no name to a field for a secret.
    const auto kind = item.state().passwordEdit ? QAccessible::Description : QAccessible::Name;
    return item.text(kind).toStdString();
  }
  static bool isControl(QAccessibleInterface& item) {
    switch (item.role()) {
      case QAccessible::Button:
      case QAccessible::CheckBox:
      case QAccessible::RadioButton:
      case QAccessible::EditableText:
      case QAccessible::SpinBox:
      case QAccessible::ListItem:
      case QAccessible::MenuItem:
        return true;
      default:
        // The toolkit calls every text focusable.
        return item.role() != QAccessible::StaticText && item.state().focusable;
    }
  }
  /// As a screen reader goes through the window.
  static void forEach(QAccessibleInterface* item,
                      const std::function<void(QAccessibleInterface&)>& visit) {
    if (!item || item->state().invisible) return;
    visit(*item);
    for (int index = 0; index < item->childCount(); ++index) forEach(item->child(index), visit);
  }
  /// Of the list whose row has the keyboard.
  int rows() {
    auto* focused = QAccessible::queryAccessibleInterface(world.window()->activeFocusItem());
    const bool isRow = focused && focused->role() == QAccessible::ListItem;
    return isRow ? focused->parent()->childCount() : 0;
  }
  QAccessibleInterface* window() { return QAccessible::queryAccessibleInterface(world.window()); }
  /// With some of what is around it.
  QImage picture(const QQuickItem& item) {
    const auto all = world.window()->grabWindow();
    const QRectF place(item.mapToScene({-16, -16}), QSizeF(item.width() + 32, item.height() + 32));
    const auto scale = all.devicePixelRatio();
    return all.copy(QRectF(place.topLeft() * scale, place.size() * scale).toAlignedRect());
  }

  TestWorld world{GetParam().program};
};

TEST_P(AccessibilityTest, EachControlHasANameAndAWayForTheKeyboardThatCanBeSeen) {
  const auto& scene = GetParam();
  QAccessible::setActive(true);
  ASSERT_TRUE(world.showPicture(scene.size.width(), scene.size.height()));
  scene.prepare(world);
  world.call("updateAvailable", Map{{"version", "2.0"}});
  world.settlePicture();

  std::map<QObject*, std::string> unreached;
  std::vector<std::string> names;
  forEach(window(), [&](QAccessibleInterface& item) {
    const auto* shown = qobject_cast<QQuickItem*>(item.object());
    if (!isControl(item) || (shown && !shown->isEnabled())) return;
    names.push_back(nameOf(item));
    EXPECT_NE(names.back(), "") << item.object()->metaObject()->className() << " under "
                                << nameOf(*item.parent());
    unreached[item.object()] = names.back();
  });
  EXPECT_THAT(names, testing::IsSupersetOf(scene.controls));

  const auto noteReached = [&] {
    for (auto* item = world.window()->activeFocusItem(); item; item = item->parentItem())
      unreached.erase(item);
    forEach(window(), [&](QAccessibleInterface& item) {
      if (item.state().selected ||
          (item.role() == QAccessible::RadioButton && item.state().checked))
        unreached.erase(item.object());
    });
  };
  noteReached();
  std::set<QQuickItem*> visited;
  for (int stops = 0; stops < 60; ++stops) {
    auto* left = world.window()->activeFocusItem();
    const auto focused = picture(*left);
    world.press(Qt::Key_Tab, Qt::ControlModifier);
    noteReached();
    if (visited.insert(left).second && left->isVisible()) {
      EXPECT_NE(picture(*left), focused) << nameOf(*QAccessible::queryAccessibleInterface(left));
    }
    for (int presses = rows(); presses > 0; --presses) {
      world.press(Qt::Key_Down);
      noteReached();
    }
  }
  // Where typing goes to the search field, rows are chosen from there.
  for (int presses = 0; presses < 5; ++presses) {
    world.press(Qt::Key_Down);
    noteReached();
  }
  for (const auto& [object, name] : unreached) ADD_FAILURE() << "no key comes to: " << name;
}

INSTANTIATE_TEST_SUITE_P(Screens, AccessibilityTest, testing::ValuesIn(scenes),
                         [](const auto& scene) { return std::string(scene.param.name); });

}  // namespace
}  // namespace zephyx
