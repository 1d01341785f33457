#include "Tests/Runner/OpenPanelTest.h"

#include <limits>

namespace zephyx {
namespace {

class ClipboardPanelTest : public OpenPanelTest {
 protected:
  const std::vector<std::shared_ptr<SimulatedVisualEffectView>>& blurs() {
    return desktop.engines.viewController("clipboard_engine")->effectViews();
  }
  std::vector<bool> shownBlurs() {
    std::vector<bool> shown;
    for (const auto& blur : blurs()) shown.push_back(!blur->isHidden);
    return shown;
  }
  static Value card(double x, double y, double w, double h) {
    return Map{{"x", x}, {"y", y}, {"w", w}, {"h", h}};
  }
};

TEST_F(ClipboardPanelTest, OpensCentredOnThePointersScreen) {
  const Screen main{{{0, 0}, {1440, 900}}, {{0, 0}, {1440, 875}}};
  const Screen second{{{1440, 0}, {1920, 1080}}, {{1440, 70}, {1920, 985}}};
  const Rect onMain{{440, 77.5}, {560, 720}};
  const Rect onSecond{{2120, 202.5}, {560, 720}};
  const std::tuple<std::vector<Screen>, int, Point, Rect> cases[] = {
      {{main, second}, 0, {700, 400}, onMain},    {{main, second}, 0, {1500, 1070}, onSecond},
      {{main, second}, 0, {1440, 500}, onSecond},  // the left edge belongs to a screen
      {{main, second}, 1, {1000, 0}, onSecond},    // the bottom edge does not
      {{main, second}, 1, {-50, -50}, onSecond},   // outside: the main screen
      {{main, second}, -1, {-50, -50}, onMain},    // no main screen either: the first
      {{}, -1, {0, 0}, {{0, 0}, {560, 720}}},
  };
  ignoreLog("[Clipboard]");
  for (const auto& [screens, mainScreen, pointer, expected] : cases) {
    switchToEditor();
    EXPECT_FALSE(panel().isVisible());
    desktop.screens.setScreens(screens, mainScreen);
    desktop.screens.movePointer(pointer);
    pressHotkey(HotkeyID::clipboardPanel);
    EXPECT_EQ(panel().frame(), expected);
    EXPECT_TRUE(panel().isKeyWindow());
  }
}

TEST_F(ClipboardPanelTest, ShowingLogsTellsItsEngineAndRemembersTheTarget) {
  switchToEditor();
  pressHotkey(HotkeyID::clipboardPanel);
  EXPECT_EQ(takeLog(), (Lines{"[Clipboard] hotkey Shift+Cmd+V (id=2) fired",
                              "[Clipboard] showPanel: visible=true key=false "
                              "firstResponder=<SimulatedView> frame=(440.0, 77.5, 560.0, 720.0)"}));
  EXPECT_THAT(panelScreen().takeCalls(), ElementsAre(MethodCall{"clipboardPanelShown", {}}));
  EXPECT_EQ(monitor().rememberedApp, editor);
  EXPECT_TRUE(panel().isKeyWindow());
  EXPECT_EQ(panel().configuration().level, 25);
  pressHotkey(HotkeyID::clipboardPanel);
  takeLog();
  EXPECT_EQ(monitor().rememberedApp, editor) << "not the panel itself";
}

TEST_F(ClipboardPanelTest, HidesWhenItLosesTheKeyboardAndOnRequestGivesItBack) {
  call("clipboardUpdateCardFrames",
       Map{{"rects", List{card(0, 0, 10, 10)}}, {"cornerRadius", 8.0}});
  takeLog();
  switchToEditor();
  EXPECT_FALSE(panel().isVisible());
  EXPECT_THAT(shownBlurs(), ElementsAre(false));
  EXPECT_EQ(editor->legacyRequests, 0);

  pressHotkey(HotkeyID::clipboardPanel);
  takeLog();
  EXPECT_EQ(call("clipboardHidePanel"), nil);
  EXPECT_FALSE(panel().isVisible());
  EXPECT_TRUE(editor->isActive());
  EXPECT_EQ(editor->legacyRequests, 1);
  monitor().rememberedApp.reset();
  EXPECT_EQ(call("clipboardHidePanel"), nil);
}

TEST_F(ClipboardPanelTest, AnswersWrongArgumentsAndUnknownMethods) {
  const auto bad = [](const char* message) -> MethodReply {
    return MethodError{"BAD_ARGS", message, {}};
  };
  const auto frames = [](const Map& arguments) { return Value(arguments); };
  const std::tuple<const char*, Value, MethodReply> cases[] = {
      {"clipboardSetPasteboard", "text", bad("clipboardSetPasteboard requiere un mapa")},
      {"clipboardSetPasteboard", {}, bad("clipboardSetPasteboard requiere un mapa")},
      {"clipboardPaste", List{}, bad("clipboardPaste requiere un mapa")},
      {"clipboardShowInFinder", Map{}, bad("clipboardShowInFinder requiere un String")},
      {"clipboardQuickLook", 1, bad("clipboardQuickLook requiere un String")},
      {"clipboardOpenUrl", std::int64_t{1} << 40, bad("openUrl requiere una URL válida")},
      {"openUrl", 5, bad("openUrl requiere una URL válida")},
      {"openUrl", "no url", bad("openUrl requiere una URL válida")},
      {"clipboardUpdateCardFrames", "wrong", nil},
      {"clipboardUpdateCardFrames", frames({{"rects", "wrong"}, {"cornerRadius", 1.0}}), nil},
      {"clipboardUpdateCardFrames", frames({{"rects", List{}}}), nil},
      {"clipboardUpdateCardFrames", frames({{"rects", List{}}, {"cornerRadius", "8"}}), nil},
      {"clipboardpaste", Map{}, NotImplemented()},
      {"quit", {}, NotImplemented()},
  };
  for (const auto& [method, arguments, reply] : cases) {
    EXPECT_EQ(call(method, arguments), reply) << method;
  }
  EXPECT_TRUE(panel().isVisible());
  EXPECT_THAT(blurs(), IsEmpty());
  EXPECT_THAT(desktop.workspace.openedUrls(), IsEmpty());
}

TEST_F(ClipboardPanelTest, ServesTheSystemsOwnServices) {
  EXPECT_EQ(call("clipboardOpenUrl", "https://a.org/ñ"), nil);
  EXPECT_EQ(call("openUrl", "https://b.org"), nil);
  EXPECT_THAT(desktop.workspace.openedUrls(), ElementsAre("https://a.org/%C3%B1", "https://b.org"));
  EXPECT_EQ(call("clipboardShowInFinder", "/tmp/a b"), nil);
  EXPECT_THAT(desktop.workspace.shownFiles(), ElementsAre("/tmp/a b"));

  EXPECT_EQ(call("clipboardCheckAccessibility"), MethodReply(Value(true)));
  desktop.accessibility.setTrusted(false);
  EXPECT_EQ(call("clipboardCheckAccessibility"), MethodReply(Value(false)));
  EXPECT_EQ(desktop.accessibility.promptCount(), 0);
  EXPECT_EQ(call("clipboardRequestAccessibility"), MethodReply(Value(false)));
  EXPECT_EQ(desktop.accessibility.promptCount(), 1);

  const auto other = desktop.workspace.start({"org.example.other", "Other", nullptr});
  desktop.workspace.bringToFront(other);
  EXPECT_EQ(call("clipboardRememberFrontmost"), nil);
  EXPECT_EQ(monitor().rememberedApp, other);
}

TEST_F(ClipboardPanelTest, CardBackgroundsFollowTheCardsFromAPoolThatNeverShrinks) {
  const auto update = [this](const List& rects, const Value& radius = 12.0) {
    EXPECT_EQ(call("clipboardUpdateCardFrames", Map{{"rects", rects}, {"cornerRadius", radius}}),
              nil);
  };
  update({card(10, 0, 200, 100), card(10, 110, 200, 50), card(0, 670, 5, 50)});
  EXPECT_EQ(takeLog(), (Lines{"[Clipboard] cardBlurs: 3 paneles, pool=3"}));
  ASSERT_EQ(blurs().size(), 3u);
  EXPECT_EQ(blurs()[0]->frame, (Rect{{10, 620}, {200, 100}}));
  EXPECT_EQ(blurs()[1]->frame, (Rect{{10, 560}, {200, 50}}));
  EXPECT_EQ(blurs()[2]->frame, (Rect{{0, 0}, {5, 50}}));
  EXPECT_EQ(blurs()[0]->cornerRadius, 12);
  const auto first = blurs()[0];

  // Integers count as numbers; an incomplete card leaves its background as it is.
  const Value broken = Map{{"x", 1.0}, {"y", 1.0}, {"w", "wide"}, {"h", 1.0}};
  update({broken, Map{{"x", 1}, {"y", 2}, {"w", std::int64_t{3}}, {"h", 4}}}, 6);
  EXPECT_EQ(blurs()[0]->frame, (Rect{{10, 620}, {200, 100}}));
  EXPECT_EQ(blurs()[0]->cornerRadius, 12);
  EXPECT_EQ(blurs()[1]->frame, (Rect{{1, 714}, {3, 4}}));
  EXPECT_EQ(blurs()[1]->cornerRadius, 6);
  EXPECT_THAT(shownBlurs(), ElementsAre(true, true, false));

  // What is no place on a screen leaves it alone as well.
  constexpr double infinity = std::numeric_limits<double>::infinity();
  update({card(1, 1, std::numeric_limits<double>::quiet_NaN(), 1), card(infinity, 1, 1, 1)});
  update({card(1, 1, 1, 1), card(1, 1, 1, 1)}, infinity);
  EXPECT_EQ(blurs()[0]->frame, (Rect{{10, 620}, {200, 100}}));
  EXPECT_EQ(blurs()[1]->frame, (Rect{{1, 714}, {3, 4}}));
  EXPECT_EQ(blurs()[1]->cornerRadius, 6);

  update({});
  EXPECT_THAT(shownBlurs(), ElementsAre(false, false, false));
  update(List(5, card(0, 0, 1, 1)));
  EXPECT_THAT(shownBlurs(), ElementsAre(true, true, true, true, true));
  EXPECT_EQ(blurs()[0], first);
  EXPECT_THAT(takeLog(), Contains("[Clipboard] cardBlurs: 5 paneles, pool=5"));

  desktop.engines.viewController("clipboard_engine")->setSize({560, 0});
  update({});
  EXPECT_THAT(shownBlurs(), Contains(true));
}

TEST_F(ClipboardPanelTest, FollowsThePointerUntilTheButtonIsReleased) {
  const auto start = panel().frame();
  const auto event = [this](EventType type, Point pointer) {
    desktop.screens.movePointer(pointer);
    EXPECT_TRUE(desktop.eventMonitors.deliver({type, 0, 0}));
  };
  const auto monitorsBefore = desktop.eventMonitors.count();
  desktop.screens.movePointer({500, 500});
  EXPECT_EQ(call("clipboardStartWindowDrag"), nil);
  desktop.screens.movePointer({510, 500});
  EXPECT_EQ(call("clipboardStartWindowDrag"), nil);
  EXPECT_EQ(desktop.eventMonitors.count(), monitorsBefore + 1);
  event(EventType::leftMouseDragged, {530, 480});
  EXPECT_EQ(panel().frame(), (Rect{{start.origin.x + 30, start.origin.y - 20}, start.size}));
  event(EventType::leftMouseDragged, {500, 500});
  EXPECT_EQ(panel().frame(), start);
  event(EventType::leftMouseUp, {600, 600});
  EXPECT_EQ(panel().frame(), start);
  EXPECT_EQ(desktop.eventMonitors.count(), monitorsBefore);
  event(EventType::leftMouseDragged, {700, 700});
  EXPECT_EQ(panel().frame(), start);
}

}  // namespace
}  // namespace zephyx
