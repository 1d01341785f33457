#include "Platform/Menu.h"
#include "Runner/MainFlutterWindow.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

constexpr auto command = eventModifier::command;
constexpr auto controlOptionCommand = eventModifier::control | eventModifier::option | command;
constexpr auto shiftCommand = eventModifier::shift | eventModifier::command;

class AppDelegateTest : public HostTest {};

TEST_F(AppDelegateTest, BuildsTheMenuInOrderWithItsKeyEquivalents) {
  launch();
  EXPECT_EQ(statusItem().length(), -2);
  EXPECT_EQ(statusItem().symbol(), "note.text");
  EXPECT_EQ(statusItem().accessibilityDescription(), "Zephyx");
  Lines rows;
  for (const auto& item : statusItem().menu()->items()) {
    const auto& [title, key, mask] =
        std::tie(item->properties().title, item->properties().keyEquivalent,
                 item->properties().keyEquivalentModifierMask);
    rows.push_back(item->isSeparator() ? "-" : title + "|" + item->action());
    if (!key.empty()) rows.back() += "|" + key + "|" + std::to_string(mask);
  }
  const auto chord = "|" + std::to_string(controlOptionCommand);
  const auto shifted = "|" + std::to_string(shiftCommand);
  EXPECT_EQ(rows, (Lines{"System Monitor|",
                         "AI Agents|",
                         "-",
                         "External Monitor Brightness|",
                         "-",
                         "Lock Keyboard for Cleaning|",
                         "Lock Trackpad for Cleaning|toggleTrackpadLock|p" + chord,
                         "-",
                         "Mute Microphone|toggleMicMute|m" + chord,
                         "-",
                         "Open|togglePopover| " + shifted,
                         "-",
                         "Export All Notes|exportAllNotes|e" + shifted,
                         "Import Notes|importNotes|i" + shifted,
                         "-",
                         "Settings…|openSettings|,|" + std::to_string(command),
                         "-",
                         "Check for Updates…|checkForUpdates",
                         "-",
                         "Quit|quitApp"}));
}

TEST_F(AppDelegateTest, TheToggleRowSaysWhatItWouldDo) {
  launch();
  for (const bool isVisible : {true, false}) {
    EXPECT_EQ(mainWindow().isVisible(), isVisible);
    statusItem().openMenu();
    EXPECT_EQ(row("togglePopover").properties().title, isVisible ? "Hide" : "Show");
    ASSERT_TRUE(statusItem().choose("togglePopover"));
  }
  EXPECT_TRUE(mainWindow().isVisible());
}

TEST_F(AppDelegateTest, MenuRowsOpenTheMainWindowFirstAndThenSendTheirMethod) {
  launch();
  for (const char* action : {"exportAllNotes", "importNotes", "openSettings"}) {
    for (const bool hidden : {true, false}) {
      if (hidden) switchToEditor();
      EXPECT_EQ(mainWindow().isVisible(), !hidden);
      statusItem().openMenu();
      ASSERT_TRUE(statusItem().choose(action));
      desktop.dispatch.settle();
      EXPECT_TRUE(mainWindow().isVisible() && mainWindow().isKeyWindow()) << action;
      EXPECT_THAT(mainScreen().takeCalls(), ElementsAre(MethodCall{action, {}}));
    }
  }
}

TEST_F(AppDelegateTest, TheSettingsRowShowsTheShortcutThatTheScreenStored) {
  const std::tuple<const char*, const char*, std::uint64_t> cases[] = {
      {R"({"keyChar":"k","meta":true,"shift":true,"alt":false,"control":false})", "k",
       shiftCommand},
      {R"({"keyChar":"ñ","alt":true,"control":true})", "ñ",
       eventModifier::option | eventModifier::control},
      {R"({"keyChar":"p"})", "p", 0},
      {R"({"keyChar":"p","meta":"yes","shift":1})", "p", 0},
      {R"({"meta":true,"shift":true})", ",", command},
      {R"({"keyChar":7,"shift":true})", ",", command},
      {R"(["keyChar","k"])", ",", command},
      {"{\"keyChar\":\"k\"", ",", command},
      {"{\"keyChar\":\"\xff\xfe\",\"shift\":true}", ",", command},
      {"", ",", command},
  };
  launch();
  for (const auto& [stored, key, mask] : cases) {
    SCOPED_TRACE(stored);
    desktop.userDefaults.setString("flutter.localShortcut.openSettings.v1", stored);
    statusItem().openMenu();
    EXPECT_EQ(row("openSettings").properties().keyEquivalent, key);
    EXPECT_EQ(row("openSettings").properties().keyEquivalentModifierMask, mask);
    statusItem().cancelTrackingWithoutAnimation();
  }
}

TEST_F(AppDelegateTest, ShowsTheMainWindowInTheMiddleOfTheMainScreenWithinLimits) {
  const std::pair<Rect, Rect> cases[] = {
      {{{0, 0}, {1440, 875}}, {{144, 65.625}, {1152, 743.75}}},
      {{{0, 0}, {800, 500}}, {{-50, -50}, {900, 600}}},
      {{{1440, 100}, {3840, 2100}}, {{2660, 700}, {1400, 900}}},
  };
  launch();
  for (const auto& [visible, expected] : cases) {
    switchToEditor();
    desktop.screens.setScreens({{visible, visible}}, 0);
    pressHotkey(HotkeyID::togglePopover);
    EXPECT_EQ(mainWindow().frame(), expected);
    EXPECT_EQ(mainWindow().configuration().level, 25);
    EXPECT_EQ(mainWindow().configuration().collectionBehavior, 346u);
    EXPECT_TRUE(mainWindow().isKeyWindow());
  }
  const auto last = mainWindow().frame();
  switchToEditor();
  desktop.screens.setScreens({}, -1);
  pressHotkey(HotkeyID::togglePopover);
  EXPECT_TRUE(mainWindow().isVisible());
  EXPECT_EQ(mainWindow().frame(), last);
}

TEST_F(AppDelegateTest, TogglingGivesTheFocusBackToWhereTheUserWas) {
  launch();
  for (int press = 0; press < 3; ++press) pressHotkey(HotkeyID::togglePopover);
  EXPECT_FALSE(mainWindow().isVisible());
  EXPECT_EQ(editor->legacyRequests + desktop.workspace.host()->legacyRequests, 0)
      << "the host itself was in front";
  switchToEditor();
  pressHotkey(HotkeyID::togglePopover);
  EXPECT_TRUE(mainWindow().isKeyWindow());
  pressHotkey(HotkeyID::togglePopover);
  EXPECT_FALSE(mainWindow().isVisible());
  EXPECT_TRUE(editor->isActive());
  EXPECT_EQ(editor->legacyRequests, 1);
}

TEST_F(AppDelegateTest, StartingTheApplicationAgainBringsUpTheMainWindow) {
  launch();
  switchToEditor();
  for (int round = 0; round < 2; ++round) {
    delegate->applicationShouldHandleReopen();
    desktop.dispatch.settle();
    EXPECT_TRUE(mainWindow().isKeyWindow());
  }
}

TEST_F(AppDelegateTest, EveryHotkeyIsCountedLoggedAndDispatched) {
  const std::pair<HotkeyID, const char*> cases[] = {
      {HotkeyID::togglePopover, ""},
      {HotkeyID::clipboardPanel, "[Clipboard] hotkey Shift+Cmd+V (id=2) fired"},
      {HotkeyID::translate, "[Translate] hotkey Control+Option+Cmd+T (id=3) fired"},
      {HotkeyID::spelling, "[Translate] hotkey Control+Option+Cmd+O (id=4) fired"},
      {HotkeyID::improve, "[Translate] hotkey Control+Option+Cmd+E (id=5) fired"},
      {HotkeyID::restoreLast,
       "[Translate] hotkey Control+Option+Cmd+L (id=6) fired — restore last"},
      {HotkeyID::trackpadLock, "[InputLock] hotkey (id=8) fired — toggle trackpad lock"},
      {HotkeyID::keyboardLock, "[InputLock] hotkey (id=9) fired — lock keyboard"},
      {HotkeyID::micMute, "[MicMute] hotkey (id=10) fired — toggle mic mute"},
  };
  launch();
  ignoreLog("[Clipboard] showPanel: visible=true");
  ignoreLog("[Translate]");
  for (const auto& [id, line] : cases) {
    SCOPED_TRACE(rawValue(id));
    takeLog();
    mainScreen().takeCalls();
    pressHotkey(id);
    const auto calls = mainScreen().takeCalls();
    ASSERT_FALSE(calls.empty());
    EXPECT_EQ(calls.front(), (MethodCall{"shortcutUsed", Map{{"id", std::int64_t{rawValue(id)}}}}));
    const auto lines = takeLog();
    EXPECT_EQ(lines.empty() ? "" : lines.front(), line);
  }
}

TEST_F(AppDelegateTest, TheTargetOfAnAiActionIsTheEditorOrWhateverIsInFront) {
  launch();
  delegate->rememberAiPasteTarget(false);
  EXPECT_EQ(monitor().rememberedApp, nullptr);
  EXPECT_THAT(takeLog(), ElementsAre("[Translate] rememberAiPasteTarget: frontmost es Zephyx sin "
                                     "editor key — se conserva el destino externo anterior"));
  switchToEditor();
  delegate->rememberAiPasteTarget(false);
  EXPECT_EQ(monitor().rememberedApp, editor);
  pressHotkey(HotkeyID::togglePopover);
  delegate->rememberAiPasteTarget(false);
  EXPECT_EQ(monitor().rememberedApp, editor);
  takeLog();
  delegate->rememberAiPasteTarget(true);
  EXPECT_EQ(monitor().rememberedApp, desktop.workspace.host());
}

}  // namespace
}  // namespace zephyx
