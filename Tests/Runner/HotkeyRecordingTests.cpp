#include "Runner/HotkeyManager.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

constexpr std::uint64_t controlOption = 0xC0000;  // event flags
const MethodReply cancelled = Value(Map{{"cancelled", true}});

/// The settings screen's calls, with the main window in front.
class HotkeyRecordingTest : public HostTest {
 protected:
  void SetUp() override { launch(); }

  std::optional<MethodReply> call(const std::string& method, const Value& arguments = {}) {
    return mainScreen().call(method, arguments);
  }
  /// Starts a recording; its answer appears in the result.
  SimulatedScreen::PendingReply record(int id = 3) {
    auto answer = mainScreen().send("hotkeyStartRecording", Map{{"id", id}});
    desktop.dispatch.settle();
    return answer;
  }
  bool allHotkeysWork() const {
    return desktop.hotKeys.registered().size() == HotkeyManager::defaults().size();
  }
  void press(std::uint16_t keyCode, std::uint64_t flags = 0) {
    desktop.keyboard.press(keyCode, flags);
    desktop.dispatch.settle();
  }
  static MethodReply error(const char* code, const char* message, const Value& details = {}) {
    return MethodError{code, message, details};
  }
};

TEST_F(HotkeyRecordingTest, TakesTheNextKeyEvenOfACombinationThatIsAHotkey) {
  const auto answer = record();
  EXPECT_THAT(desktop.hotKeys.registered(), IsEmpty());
  EXPECT_TRUE(desktop.eventMonitors.hasKeyboard());
  press(9, 0x120000);  // Shift+Command+V, the clipboard panel's
  EXPECT_EQ(*answer,
            MethodReply(Value(Map{{"keyCode", 9}, {"modifiers", 0x300}, {"display", "⇧⌘V"}})));
  EXPECT_TRUE(allHotkeysWork());
  EXPECT_FALSE(desktop.eventMonitors.hasKeyboard());
  EXPECT_FALSE(panel().isVisible());
  EXPECT_THAT(mainWindow().receivedKeys, IsEmpty());
  press(9);
  EXPECT_EQ(mainWindow().receivedKeys.size(), 1u) << "afterwards keys are the screen's again";
}

TEST_F(HotkeyRecordingTest, EndsOnceWhateverEndsIt) {
  const std::pair<const char*, std::function<void()>> ends[] = {
      {"escape", [&] { press(53); }},
      {"time", [&] { desktop.dispatch.advance(6); }},
      {"cancel", [&] { EXPECT_EQ(call("hotkeyCancelRecording"), nil); }},
      {"the window hides", [&] { switchToEditor(); }}};
  for (const auto& [name, end] : ends) {
    SCOPED_TRACE(name);
    const auto answer = record();
    desktop.dispatch.advance(1);
    EXPECT_EQ(*answer, std::nullopt);
    end();
    EXPECT_EQ(*answer, cancelled);
    EXPECT_TRUE(allHotkeysWork());
    desktop.dispatch.advance(7);
  }
  delegate->togglePopover();
  desktop.dispatch.settle();
  const auto first = record();
  const auto second = record();
  EXPECT_EQ(*first, cancelled);
  press(53, controlOption);
  EXPECT_EQ(*second,
            MethodReply(Value(Map{{"keyCode", 53}, {"modifiers", 0x1800}, {"display", "⌃⌥Esc"}})));
  EXPECT_EQ(call("hotkeyCancelRecording"), nil);
  EXPECT_TRUE(allHotkeysWork());
}

TEST_F(HotkeyRecordingTest, ListsSetsAndResets) {
  const auto payload = [](int id, int keyCode, int modifiers, const char* display, bool isDefault) {
    return Value(Map{{"id", id},
                     {"keyCode", keyCode},
                     {"modifiers", modifiers},
                     {"display", display},
                     {"isDefault", isDefault}});
  };
  const auto answer = call("hotkeysGet");
  const auto* list = std::get<Value>(*answer).asList();
  ASSERT_TRUE(list);
  ASSERT_EQ(list->size(), 9u);
  EXPECT_EQ(list->at(1), payload(2, 9, 0x300, "⇧⌘V", true));

  const auto changed = Map{{"id", 3}, {"keyCode", 11}, {"modifiers", 0x1900}};
  EXPECT_EQ(call("hotkeySet", changed), MethodReply(payload(3, 11, 0x1900, "⌃⌥⌘B", false)));
  EXPECT_EQ(call("hotkeyReset", Map{{"id", 3}}), MethodReply(payload(3, 17, 0x1900, "⌃⌥⌘T", true)));
  call("hotkeySet", changed);
  EXPECT_EQ(call("hotkeysResetAll"), answer);
  EXPECT_TRUE(allHotkeysWork());
}

TEST_F(HotkeyRecordingTest, SaysInWordsWhatItRefusesAndChangesNothing) {
  const auto set = [](Value id, Value keyCode, Value modifiers) {
    return Map{{"id", std::move(id)},
               {"keyCode", std::move(keyCode)},
               {"modifiers", std::move(modifiers)}};
  };
  const auto before = call("hotkeysGet");
  const auto malformed = error("invalid", "hotkeySet requiere id/keyCode/modifiers válidos");
  for (const auto& arguments :
       {Value(set(0, 1, 256)), Value(set(11, 1, 256)), Value(set("3", 1, 256)),
        Value(set(3, -1, 256)), Value(set(3, 1, std::int64_t{1} << 32)), Value(set(3, 1.5, 256)),
        Value(Map{{"id", 3}}), Value()}) {
    EXPECT_EQ(call("hotkeySet", arguments), malformed);
  }
  EXPECT_EQ(call("hotkeyReset", Map{{"id", 7}}),
            error("invalid", "hotkeyReset requiere un id válido"));
  EXPECT_EQ(call("hotkeyStartRecording", Map{}),
            error("invalid", "hotkeyStartRecording requiere un id válido"));
  EXPECT_EQ(call("hotkeySet", set(3, 17, 0x200)),
            error("invalid", "El combo debe incluir ⌘, ⌃ u ⌥ — Shift solo no alcanza.", 3));
  EXPECT_EQ(call("hotkeySet", set(4, 17, 0x1900)),
            error("duplicate", "Ese combo ya está asignado a otro atajo.", 4));
  desktop.hotKeys.otherProgramClaims({11, 0x1900});
  ignoreLog("[HotkeyManager] registro fallido para id=3");
  EXPECT_EQ(call("hotkeySet", set(3, 11, 0x1900)),
            error("registrationFailed",
                  "No se pudo registrar el atajo con macOS. Se mantuvo el anterior.", 3));
  EXPECT_EQ(call("hotkeysGet"), before);
  EXPECT_TRUE(allHotkeysWork());
}

TEST_F(HotkeyRecordingTest, AHotkeyThatIsSetMeanwhileIsRegisteredOnce) {
  const auto answer = record();
  call("hotkeySet", Map{{"id", 4}, {"keyCode", 11}, {"modifiers", 0x1900}});
  press(53);
  EXPECT_EQ(*answer, cancelled);
  EXPECT_TRUE(allHotkeysWork());
}

}  // namespace
}  // namespace zephyx
