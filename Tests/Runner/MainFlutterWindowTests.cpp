#include "Channel/StandardMethodCodec.h"
#include "Runner/MainFlutterWindow.h"
#include "Runner/TelemetryRelay.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

class MainFlutterWindowTest : public HostTest {
 protected:
  void SetUp() override { launch(); }
};

TEST_F(MainFlutterWindowTest, HidesWhenAnotherApplicationTakesTheKeyboardButNotForThePanel) {
  ignoreLog("[Clipboard]");
  pressHotkey(HotkeyID::clipboardPanel);
  EXPECT_TRUE(panel().isKeyWindow());
  EXPECT_TRUE(mainWindow().isVisible());
  mainWindow().makeKeyAndOrderFront();
  EXPECT_FALSE(panel().isVisible());
  switchToEditor();
  EXPECT_FALSE(mainWindow().isVisible());
}

TEST_F(MainFlutterWindowTest, StaysWhenItHasTheKeyboardBackAtOnce) {
  desktop.workspace.bringToFront(editor);
  desktop.workspace.bringToFront(desktop.workspace.host());
  EXPECT_TRUE(mainWindow().isKeyWindow());
  desktop.dispatch.settle();
  EXPECT_TRUE(mainWindow().isVisible());
}

TEST_F(MainFlutterWindowTest, WaitsBehindAFileDialogAndComesBack) {
  for (const std::function<void()>& meanwhile :
       {std::function<void()>([] {}), {[this] { desktop.workspace.bringToFront(editor); }}}) {
    desktop.application.openSavePanel();
    desktop.dispatch.settle();
    EXPECT_TRUE(mainWindow().isVisible());
    desktop.dispatch.advance(2.05);
    EXPECT_FALSE(mainWindow().isKeyWindow());
    EXPECT_EQ(mainWindow().configuration().level, 0);
    meanwhile();
    desktop.application.closeSavePanel();
    desktop.dispatch.advance(0.3);
    EXPECT_EQ(mainWindow().configuration().level, 25);
    EXPECT_TRUE(mainWindow().isKeyWindow());
  }
  desktop.application.openSavePanel();
  desktop.dispatch.settle();
  desktop.application.closeSavePanel();
  mainWindow().makeKeyAndOrderFront();
  EXPECT_EQ(mainWindow().configuration().level, 25) << "at once, when it is given the keyboard";
  desktop.dispatch.advance(1);
}

TEST_F(MainFlutterWindowTest, ControlArrowHidesItAndEveryKeyGoesOn) {
  constexpr std::uint16_t upArrow = 126;
  constexpr std::uint16_t downArrow = 125;
  const std::tuple<std::uint16_t, std::uint64_t, bool> cases[] = {
      {keyCode::leftArrow, eventModifier::control, true},
      {keyCode::rightArrow, eventModifier::control, true},
      {keyCode::rightArrow, eventModifier::control | eventModifier::shift, true},
      {keyCode::leftArrow, 0, false},
      {keyCode::rightArrow, eventModifier::command, false},
      {upArrow, eventModifier::control, false},
      {downArrow, eventModifier::control, false},
      {keyCode::space, eventModifier::control, false},
  };
  for (const auto& [keyCode, modifiers, hides] : cases) {
    SCOPED_TRACE(keyCode);
    mainWindow().makeKeyAndOrderFront();
    mainWindow().receivedKeys.clear();
    EXPECT_TRUE(desktop.eventMonitors.deliver({EventType::keyDown, modifiers, keyCode}));
    EXPECT_EQ(mainWindow().isVisible(), !hides);
  }
}

TEST_F(MainFlutterWindowTest, ListensForSpaceChangesOnTheDefaultCentreOnly) {
  desktop.workspaceCenter.post(notification::activeSpaceDidChange, nullptr);
  EXPECT_TRUE(mainWindow().isVisible());
  desktop.defaultCenter.post(notification::activeSpaceDidChange, nullptr);
  EXPECT_FALSE(mainWindow().isVisible());
}

TEST_F(MainFlutterWindowTest, AnswersItsMethods) {
  const auto badUrl = [](const Value& arguments) {
    return MethodReply(MethodError{"BAD_ARGS", "openUrl requiere una URL válida", arguments});
  };
  const std::tuple<const char*, Value, MethodReply> cases[] = {
      {"openUrl", "https://example.org/a?b=c", Value()},
      {"openUrl", "mailto:someone@example.org", Value()},
      {"openUrl", "", badUrl("")},
      {"openUrl", "no url", badUrl("no url")},
      {"openUrl", std::int32_t{7}, badUrl(std::int32_t{7})},
      {"openUrl", std::int64_t{1} << 40, badUrl(std::int64_t{1} << 40)},
      {"openUrl", Map{{"url", "https://example.org"}}, badUrl(Map{{"url", "https://example.org"}})},
      {"openUrl", {}, badUrl({})},
      {"noSuchMethod", Map{{"a", 1}}, NotImplemented()},
      {"", {}, NotImplemented()},
  };
  for (const auto& [method, arguments, reply] : cases) {
    SCOPED_TRACE(method);
    EXPECT_EQ(mainScreen().call(method, arguments), reply);
  }
  EXPECT_THAT(desktop.workspace.openedUrls(),
              ElementsAre("https://example.org/a?b=c", "mailto:someone@example.org"));
  EXPECT_TRUE(mainWindow().isVisible());
  EXPECT_FALSE(desktop.application.isTerminated());
  EXPECT_EQ(mainScreen().call("quit"), MethodReply(Value()));
  EXPECT_TRUE(desktop.application.isTerminated());
}

TEST_F(MainFlutterWindowTest, MalformedBytesAreAnErrorAndLoggedWithoutTheirContents) {
  auto message = StandardMethodCodec::encodeCall("openUrl", "https://example.org/secret");
  message.resize(message.size() - 3);
  const auto reply = mainScreen().sendBytes(message);
  desktop.dispatch.settle();
  ASSERT_TRUE(reply->has_value());
  const auto* error = std::get_if<MethodError>(&reply->value());
  ASSERT_TRUE(error);
  EXPECT_EQ(error->code, "malformed");
  EXPECT_THAT(desktop.workspace.openedUrls(), IsEmpty());
  EXPECT_THAT(takeLog(), ElementsAre("[Channel] com.zephyx.app/menu: malformed call"));
}

TEST_F(MainFlutterWindowTest, ItsEndWhileAFileDialogIsOpenLeavesNothing) {
  desktop.application.openSavePanel();
  const std::weak_ptr<SimulatedEngine> engine = desktop.engines.engine("default");
  endHost();
  EXPECT_TRUE(engine.expired());
}

TEST_F(MainFlutterWindowTest, TelemetryGoesToTheMainEngineAfterTheCallersWork) {
  auto& relay = TelemetryRelay::shared();
  relay.track("mic_toggled", {{"muted", "true"}});
  relay.track("plain", {});
  EXPECT_THAT(mainScreen().calls(), IsEmpty());
  desktop.dispatch.settle();
  EXPECT_THAT(mainScreen().takeCalls(),
              ElementsAre(MethodCall{"telemetryEvent", Map{{"name", "mic_toggled"},
                                                           {"props", Map{{"muted", "true"}}}}},
                          MethodCall{"telemetryEvent", Map{{"name", "plain"}, {"props", Map()}}}));
  desktop.dispatch.globalQueue().async([&relay] { relay.track("elsewhere", {}); });
  desktop.dispatch.settle();
  EXPECT_EQ(mainScreen().takeCalls().size(), 1u);

  delegate.reset();  // and with it the main window
  relay.track("lost", {});
  desktop.dispatch.settle();
}

}  // namespace
}  // namespace zephyx
