#include <gtest/gtest.h>

#include "Channel/StandardMethodCodec.h"
#include "Screens/MainScreenController.h"
#include "Screens/ScreenFolder.h"
#include "Tests/Screens/TestWorld.h"

namespace zephyx {
namespace {

Value payload(std::int32_t id, const char* display, std::int32_t modifiers, bool usual = true) {
  return Map{{"id", id},
             {"keyCode", 17},
             {"modifiers", modifiers},
             {"display", display},
             {"isDefault", usual}};
}

const Map pressed{{"keyCode", 3}, {"modifiers", 0x900}, {"display", "⌥⌘F"}};

class HotkeySettingsTest : public testing::Test {
 protected:
  HotkeySettingsTest() {
    world.replies["hotkeysGet"] =
        Value(List{payload(1, "⇧⌘Space", 0x300), payload(3, "⌃⌥⌘T", 0x1900),
                   payload(10, "⌃⌥⌘M", 0x1900), "no payload", Map{{"id", 4}}});
    world.showPicture(900, 600);
    world.call("openSettings");
    EXPECT_TRUE(waitFor([&] { return hotkeys()->rowCount() == 3; }));
  }
  MainScreenController* screen() { return world.controller<MainScreenController>(); }
  HotkeySettings* hotkeys() { return screen()->hotkeys(); }
  QVariant data(int row, HotkeySettings::Role role) { return hotkeys()->index(row).data(role); }
  QString keys(int row) { return data(row, HotkeySettings::keysRole).toStringList().join(' '); }
  std::string problem(int row) {
    return data(row, HotkeySettings::problemRole).toString().toStdString();
  }
  /// Begins a recording that the host has not answered yet.
  void beginRecording(int row) {
    auto& open = world.unanswered["hotkeyStartRecording"];
    const auto count = open.size();
    hotkeys()->record(row);
    ASSERT_TRUE(waitFor([&] { return open.size() > count; }));
  }
  void endRecording(std::size_t number, const Value& end) {
    world.unanswered["hotkeyStartRecording"].at(number)(
        StandardMethodCodec::encodeReply(MethodReply(end)));
  }

  TestWorld world{"main"};
};

TEST_F(HotkeySettingsTest, ListsTheHotkeysAndAsksAgainForTheKeysNames) {
  EXPECT_EQ(keys(0), "Shift Super Space");
  EXPECT_EQ(keys(1), "Ctrl Alt Super T");
  EXPECT_EQ(data(1, HotkeySettings::nameRole), "Translate");
  EXPECT_TRUE(hotkeys()->allUsual());
  world.replies["hotkeysGet"] = Value(
      List{payload(1, "⇧⌘Space", 0x300), payload(3, "⌃⌥⌘Е", 0x1900), payload(10, "⌃⌥⌘Ь", 0x1900)});
  QWindow other;
  other.show();
  other.requestActivate();
  ASSERT_TRUE(waitFor([&] { return !world.window()->isActive(); }));
  world.window()->requestActivate();
  EXPECT_TRUE(waitFor([&] { return keys(1) == "Ctrl Alt Super Е"; }));
  const auto asked = world.callsOf("hotkeysGet").size();
  screen()->setShowsSettings(false);
  screen()->setShowsSettings(true);
  EXPECT_TRUE(world.waitForCall("hotkeysGet", asked + 1));
}

TEST_F(HotkeySettingsTest, RecordsACombinationAndAssignsIt) {
  beginRecording(1);
  EXPECT_TRUE(hotkeys()->isRecording());
  EXPECT_TRUE(data(1, HotkeySettings::recordingRole).toBool());
  world.replies["hotkeySet"] = payload(3, "⌥⌘F", 0x900, false);
  endRecording(0, pressed);
  ASSERT_TRUE(waitFor([&] { return keys(1) == "Alt Super F"; }));
  EXPECT_EQ(world.callsOf("hotkeySet").back().arguments,
            Value(Map{{"id", 3}, {"keyCode", 3}, {"modifiers", 0x900}}));
  EXPECT_FALSE(hotkeys()->isRecording());
  EXPECT_FALSE(hotkeys()->allUsual());

  world.replies["hotkeyReset"] = payload(3, "⌃⌥⌘T", 0x1900);
  hotkeys()->reset(1);
  EXPECT_TRUE(waitFor([&] { return hotkeys()->allUsual(); }));
}

TEST_F(HotkeySettingsTest, ShowsTheHostsWordsAtTheRowUntilItIsTriedAgain) {
  beginRecording(1);
  world.replies["hotkeySet"] =
      MethodError{"duplicate", "Ese combo ya está asignado a otro atajo.", 3};
  endRecording(0, pressed);
  ASSERT_TRUE(waitFor([&] { return problem(1) == "Ese combo ya está asignado a otro atajo."; }));
  EXPECT_EQ(keys(1), "Ctrl Alt Super T");
  beginRecording(2);
  EXPECT_EQ(problem(1), "");
  world.replies["hotkeysResetAll"] = world.replies["hotkeysGet"];
  hotkeys()->resetAll();
  EXPECT_TRUE(world.waitForCall("hotkeysResetAll"));
  EXPECT_EQ(world.callsOf("hotkeyCancelRecording").size(), 1U);
}

TEST_F(HotkeySettingsTest, ASecondRecordingTakesThePlaceOfTheFirst) {
  beginRecording(0);
  beginRecording(2);
  endRecording(0, Map{{"cancelled", true}});
  world.call("telemetryEvent");
  EXPECT_TRUE(data(2, HotkeySettings::recordingRole).toBool());
  EXPECT_FALSE(data(0, HotkeySettings::recordingRole).toBool());
  world.replies["hotkeySet"] = payload(10, "⌥⌘F", 0x900, false);
  endRecording(1, pressed);
  EXPECT_TRUE(waitFor([&] { return keys(2) == "Alt Super F"; }));
}

TEST_F(HotkeySettingsTest, LeavingThePageOrHidingTheWindowEndsTheRecording) {
  beginRecording(0);
  world.press(Qt::Key_Escape);
  screen()->setShowsSettings(false);
  ASSERT_TRUE(world.waitForCall("hotkeyCancelRecording"));
  screen()->setShowsSettings(true);
  beginRecording(0);
  world.window()->hide();
  EXPECT_TRUE(world.waitForCall("hotkeyCancelRecording", 2));
  endRecording(1, Map{{"cancelled", true}});
  world.call("telemetryEvent");
  EXPECT_EQ(problem(0), "");
  EXPECT_FALSE(hotkeys()->isRecording());
}

TEST(HotkeyRecording, SaysSoWhenNothingWasPressedInTime) {
  auto host = std::make_shared<TestMessenger>();
  auto end = std::make_shared<TestMessenger>();
  TestMessenger::join(host, end);
  const auto handler =
      host->setMessageHandler(screenChannelName, [](BytesView bytes, const BinaryReply& reply) {
        const auto call = StandardMethodCodec::decodeCall(bytes);
        const Value answer = call->method == "hotkeysGet" ? Value(List{payload(3, "⌃⌥⌘T", 0x1900)})
                                                          : Value(Map{{"cancelled", true}});
        reply(StandardMethodCodec::encodeReply(MethodReply(answer)));
      });
  MethodChannel channel(end, screenChannelName, reportToLog);
  for (const auto timeout : {std::chrono::milliseconds(0), std::chrono::milliseconds(60'000)}) {
    HotkeySettings hotkeys(channel, timeout);
    hotkeys.refresh();
    ASSERT_TRUE(waitFor([&] { return hotkeys.rowCount() == 1; }));
    hotkeys.record(0);
    ASSERT_TRUE(waitFor([&] { return !hotkeys.isRecording(); }));
    const QString problem = hotkeys.index(0).data(HotkeySettings::problemRole).toString();
    EXPECT_EQ(problem.isEmpty(), timeout.count() > 0) << "Escape needs no words";
  }
}

}  // namespace
}  // namespace zephyx
