#include "Platform/Menu.h"
#include "Runner/HotkeyConfig.h"
#include "Runner/HotkeyManager.h"
#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

constexpr std::uint32_t shift = 0x0200;
constexpr std::uint32_t shiftCommand = 0x0300;
constexpr std::uint32_t controlOptionCommand = 0x1900;

class HotkeyManagerTest : public HostTest {
 protected:
  void store(const std::string& json) { desktop.userDefaults.setData("hotkeys.v1", bytesOf(json)); }
  std::optional<std::string> stored() const {
    const auto data = desktop.userDefaults.data("hotkeys.v1");
    return data ? std::optional(std::string(data->begin(), data->end())) : std::nullopt;
  }
  /// The loaded and registered manager.
  HotkeyManager& ready() {
    manager.loadConfigs(desktop.userDefaults);
    manager.registerAll();
    return manager;
  }
  std::optional<HotkeyError> set(HotkeyID id, HotkeyConfig config) {
    return manager.set(id, config, desktop.userDefaults);
  }
  void TearDown() override {
    manager.testUnregisterOverride = nullptr;
    manager.pauseAll();
    HostTest::TearDown();
  }

  HotkeyManager manager{desktop.platform()};
};

TEST_F(HotkeyManagerTest, LoadsTheFactoryTableWithTheStoredCombinationsOverIt) {
  const auto& factory = HotkeyManager::defaults();
  const auto changed = [&](HotkeyID id, HotkeyConfig config) {
    auto table = factory;
    table[id] = config;
    return table;
  };
  const std::pair<const char*, HotkeyTable> cases[] = {
      {R"({"2":{"keyCode":11,"modifiers":6400}})", changed(HotkeyID::clipboardPanel, {11, 6400})},
      {R"({"42":{"keyCode":1,"modifiers":256},"7":{"keyCode":1,"modifiers":256},)"
       R"("10":{"keyCode":1,"modifiers":256}})",
       changed(HotkeyID::micMute, {1, 256})},
      // Not validated: a lone shift, and a combination that another has.
      {R"({"3":{"keyCode":9,"modifiers":512}})", changed(HotkeyID::translate, {9, 512})},
      {R"({"3":{"keyCode":9,"modifiers":768}})", changed(HotkeyID::translate, {9, 768})},
      {R"({"3":{"keyCode":4294967295,"modifiers":4294967295}})",
       changed(HotkeyID::translate, {0xFFFFFFFF, 0xFFFFFFFF})},
      {"{}", factory},
      {"", factory},
      {"[]", factory},
      {"{\"2\":", factory},
      {"\xff\xfe{}", factory},
      {R"({"2":{"keyCode":11}})", factory},
      {R"({"2":{"keyCode":"11","modifiers":256}})", factory},
      {R"({"2":{"keyCode":-1,"modifiers":256}})", factory},
      {R"({"2":{"keyCode":4294967296,"modifiers":256}})", factory},
      {R"({"two":{"keyCode":11,"modifiers":256}})", factory},
  };
  for (const auto& [json, expected] : cases) {
    SCOPED_TRACE(json);
    store(json);
    EXPECT_EQ(manager.loadConfigs(desktop.userDefaults), expected);
    EXPECT_EQ(manager.configs(), expected);
    EXPECT_EQ(stored(), json);
  }
  desktop.userDefaults.removeObject("hotkeys.v1");
  EXPECT_EQ(manager.loadConfigs(desktop.userDefaults), factory);
  desktop.userDefaults.setString("hotkeys.v1", R"({"2":{"keyCode":11,"modifiers":256}})");
  EXPECT_EQ(manager.loadConfigs(desktop.userDefaults), factory);
}

TEST_F(HotkeyManagerTest, ValidatesCombinations) {
  manager.loadConfigs(desktop.userDefaults);
  const std::tuple<HotkeyID, HotkeyConfig, std::optional<HotkeyError>> cases[] = {
      {HotkeyID::spelling, {3, 0}, HotkeyError::invalid},
      {HotkeyID::spelling, {3, shift}, HotkeyError::invalid},
      {HotkeyID::spelling, {3, shift | 0x0400}, HotkeyError::invalid},
      {HotkeyID::spelling, {3, shiftCommand}, std::nullopt},
      {HotkeyID::spelling, {3, carbonModifier::option}, std::nullopt},
      {HotkeyID::spelling, {3, carbonModifier::control}, std::nullopt},
      {HotkeyID::spelling, {17, controlOptionCommand}, HotkeyError::duplicate},
      {HotkeyID::spelling, {17, shiftCommand}, std::nullopt},
      {HotkeyID::translate, {17, controlOptionCommand}, std::nullopt},
  };
  for (const auto& [id, config, error] : cases) {
    SCOPED_TRACE(std::to_string(config.keyCode) + " " + std::to_string(config.modifiers));
    EXPECT_EQ(manager.validate(id, config), error);
  }
  // A factory combination that nobody has any more is free.
  store(R"({"3":{"keyCode":3,"modifiers":6400}})");
  manager.loadConfigs(desktop.userDefaults);
  EXPECT_EQ(manager.validate(HotkeyID::spelling, {17, controlOptionCommand}), std::nullopt);
}

TEST_F(HotkeyManagerTest, ShowsCombinationsInTheCurrentLayout) {
  const auto& us = SimulatedKeyboardLayout::us;
  const auto& german = SimulatedKeyboardLayout::german;
  const std::tuple<const SimulatedKeyboardLayout::Table&, HotkeyConfig, const char*> cases[] = {
      {us, {17, controlOptionCommand}, "⌃⌥⌘T"},
      {us, {9, 0x1B00}, "⌃⌥⇧⌘V"},
      {us, {49, shiftCommand}, "⇧⌘Space"},
      {us, {53, 0x0100}, "⌘Esc"},
      {us, {9, 0}, "V"},
      {us, {200, 0x0100}, "⌘?"},
      {us, {18, 0x0100}, "⌘1"},
      {german, {16, 0x0100}, "⌘Z"},
      {german, {41, 0x0100}, "⌘Ö"},
      {german, {27, 0x0100}, "⌘SS"},
  };
  for (const auto& [layout, config, display] : cases) {
    desktop.keyboardLayout.use(layout);
    EXPECT_EQ(manager.displayString(config), display);
  }
}

TEST_F(HotkeyManagerTest, TranslatesModifiersBothWaysAndDropsTheOthers) {
  constexpr std::uint64_t capsLockFunctionAndNumericPad = 0x10000 | 0x800000 | 0x200000;
  const std::pair<std::uint64_t, std::uint32_t> pairs[] = {{0, 0},
                                                           {0x100000, 0x0100},
                                                           {0x20000, 0x0200},
                                                           {0x80000, 0x0800},
                                                           {0x40000, 0x1000},
                                                           {0x1E0000, 0x1B00}};
  for (const auto& [event, carbon] : pairs) {
    EXPECT_EQ(carbonModifiers(event | capsLockFunctionAndNumericPad), carbon);
    EXPECT_EQ(eventModifiers(carbon | 0x0400), event);
  }
}

TEST_F(HotkeyManagerTest, MirrorsTheShowHotkeyOnItsMenuRow) {
  const auto row = std::make_shared<MenuItem>("Open", "togglePopover", nullptr);
  const auto expectShown = [&row](const char* key, std::uint64_t mask) {
    EXPECT_EQ(row->properties().keyEquivalent, key);
    EXPECT_EQ(row->properties().keyEquivalentModifierMask, mask);
  };
  manager.updateToggleMenuItem();
  manager.toggleMenuItem = row;
  manager.updateToggleMenuItem();
  EXPECT_EQ(row->properties().keyEquivalent, "");
  ready();
  expectShown(" ", 0x120000);
  desktop.keyboardLayout.use(SimulatedKeyboardLayout::german);
  set(HotkeyID::togglePopover, {41, 0x1800});
  expectShown("ö", 0xC0000);
  set(HotkeyID::togglePopover, {200, 0x0100});
  expectShown("", 0x100000);
}

TEST_F(HotkeyManagerTest, RegistersAllInOrderAndReportsEachStatus) {
  store(R"({"4":{"keyCode":3,"modifiers":6400}})");
  desktop.hotKeys.otherProgramClaims({3, controlOptionCommand});
  desktop.hotKeys.removeKey(46);
  const auto statuses = manager.registerAll();  // loads the standard defaults first
  EXPECT_EQ(statuses.size(), 9u);
  for (const auto& [id, status] : statuses) {
    EXPECT_EQ(status, id == HotkeyID::spelling  ? hotKeyStatus::exists
                      : id == HotkeyID::micMute ? hotKeyStatus::invalid
                                                : hotKeyStatus::noErr);
  }
  EXPECT_THAT(takeLog(),
              ElementsAre("[HotkeyManager] registro fallido para id=4 (OSStatus=-9878)",
                          "[HotkeyManager] registro fallido para id=10 (OSStatus=-9879)"));
  EXPECT_EQ(desktop.hotKeys.registered().size(), 7u);
  EXPECT_EQ(desktop.hotKeys.registered().at({9, shiftCommand}).id, 2u);
  manager.pauseAll();
  EXPECT_THAT(desktop.hotKeys.registered(), IsEmpty());
  EXPECT_EQ(manager.configs().size(), 9u);
}

TEST_F(HotkeyManagerTest, TheOverridesStandInForTheSystem) {
  std::vector<std::uint32_t> ids;
  manager.testRegisterOverride = [&](HotkeyID id, const HotkeyConfig&) {
    ids.push_back(rawValue(id));
    return id == HotkeyID::translate ? -50 : 0;
  };
  manager.testUnregisterOverride = [&](HotkeyID id) { ids.push_back(rawValue(id)); };
  EXPECT_EQ(manager.registerAll().at(HotkeyID::translate), -50);
  EXPECT_THAT(takeLog(), ElementsAre("[HotkeyManager] registro fallido (test seam) para id=3 "
                                     "(OSStatus=-50)"));
  manager.pauseAll();
  EXPECT_THAT(ids, ElementsAre(1, 2, 3, 4, 5, 6, 8, 9, 10, 1, 2, 3, 4, 5, 6, 8, 9, 10));
  EXPECT_THAT(desktop.hotKeys.registered(), IsEmpty());
}

TEST_F(HotkeyManagerTest, SettingSwapsTheCombinationAndWhatItStoresItLoadsAgain) {
  ready();
  EXPECT_EQ(set(HotkeyID::translate, {45, 0x0100}), std::nullopt);
  EXPECT_THAT(stored().value(), HasSubstr(R"("3":{"keyCode":45,"modifiers":256})"));
  EXPECT_THAT(desktop.hotKeys.registered(), Contains(Key(std::pair(45u, 0x0100u))));
  EXPECT_EQ(desktop.hotKeys.registered().count({17, controlOptionCommand}), 0u);
  HotkeyManager next(desktop.platform());
  EXPECT_EQ(next.loadConfigs(desktop.userDefaults), manager.configs());
  EXPECT_EQ(next.configs().at(HotkeyID::translate), (HotkeyConfig{45, 0x0100}));
  EXPECT_EQ(manager.reset(HotkeyID::translate, desktop.userDefaults), std::nullopt);
  EXPECT_EQ(manager.configs(), HotkeyManager::defaults());
  EXPECT_TRUE(stored());
  manager.resetAll(desktop.userDefaults);
  EXPECT_FALSE(stored());
  EXPECT_EQ(desktop.hotKeys.registered().size(), 9u);
}

TEST_F(HotkeyManagerTest, ARefusedCombinationLeavesThePreviousOneInForce) {
  ready();
  desktop.hotKeys.otherProgramClaims({45, 0x0100});
  for (const auto& [config, error] : std::vector<std::pair<HotkeyConfig, HotkeyError>>{
           {{45, 0x0100}, HotkeyError::registrationFailed},
           {{3, shift}, HotkeyError::invalid},
           {{9, shiftCommand}, HotkeyError::duplicate}}) {
    EXPECT_EQ(set(HotkeyID::translate, config), error);
    EXPECT_EQ(manager.configs(), HotkeyManager::defaults());
    EXPECT_FALSE(stored());
    EXPECT_EQ(desktop.hotKeys.registered().size(), 9u);
    EXPECT_EQ(desktop.hotKeys.registered().at({17, controlOptionCommand}).id, 3u);
  }
  EXPECT_THAT(takeLog(),
              ElementsAre("[HotkeyManager] registro fallido para id=3 (OSStatus=-9878)"));

  store(R"({"3":{"keyCode":3,"modifiers":6400},"4":{"keyCode":17,"modifiers":6400}})");
  manager.pauseAll();
  ready();
  const auto before = manager.configs();
  EXPECT_EQ(manager.reset(HotkeyID::translate, desktop.userDefaults), HotkeyError::duplicate);
  EXPECT_EQ(manager.configs(), before);
  EXPECT_EQ(desktop.hotKeys.registered().at({17, controlOptionCommand}).id, 4u);
}

}  // namespace
}  // namespace zephyx
