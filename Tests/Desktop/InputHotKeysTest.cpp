#include <xcb/xcb.h>

#include <QtWidgets/QMenu>

#include "Platform/Events.h"
#include "Platform/Linux/Input/KeyCodes.h"
#include "Platform/Linux/Input/LinuxHotKeys.h"
#include "Platform/Linux/Input/LinuxKeyboardLayout.h"
#include "Platform/Linux/X11.h"
#include "Tests/Desktop/InputTest.h"

namespace zephyx {
namespace {

constexpr std::uint32_t shiftCommand = carbonModifier::shift | carbonModifier::command;
constexpr std::uint16_t shiftSuper = XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_4;

class InputHotKeysTest : public InputTest {
 protected:
  void SetUp() override {
    InputTest::SetUp();
    hotKeys_ = std::make_unique<LinuxHotKeys>();
    handler_ = hotKeys_->setPressedHandler([this](HotKeyIdentity identity) {
      ASSERT_EQ(identity.signature, 7u);
      fired_.push_back(identity.id);
    });
  }
  void TearDown() override {
    handler_.reset();
    hotKeys_.reset();
    InputTest::TearDown();
  }

  HotKeyRegistration add(std::uint32_t id, std::uint32_t keyCode = keyCode::v,
                         std::uint32_t modifiers = shiftCommand) {
    return hotKeys_->registerHotKey(keyCode, modifiers, {7, id});
  }
  /// What fired since the last call, up to now.
  std::vector<std::uint32_t> fired() {
    pumpAll();
    return std::exchange(fired_, {});
  }

  std::unique_ptr<LinuxHotKeys> hotKeys_;
  Registration handler_;
  std::vector<std::uint32_t> fired_;
};

using Fired = std::vector<std::uint32_t>;

TEST_F(InputHotKeysTest, FiresOncePerPressWhateverLocksAndLayoutAre) {
  TargetProgram terminal(desktop(), TargetProgram::Kind::Terminal);
  const auto registration = add(2);
  ASSERT_EQ(registration.status, hotKeyStatus::noErr);

  struct Case {
    const char* name;
    std::vector<std::string> layout;
    unsigned group;
    std::vector<std::uint8_t> locks;
  };
  const Case cases[] = {
      {"plain", {"us"}, 0, {}},
      {"Caps Lock", {"us"}, 0, {key::CapsLock}},
      {"Num Lock", {"us"}, 0, {key::NumLock}},
      {"both locks", {"us"}, 0, {key::CapsLock, key::NumLock}},
      {"German", {"de"}, 0, {}},
      {"Russian, Num Lock", {"ru"}, 0, {key::NumLock}},
      {"French", {"fr"}, 0, {}},
      {"second layout in effect", {"us,ru"}, 1, {}},
      {"switched by two modifiers", {"us,de", "-option", "grp:alt_shift_toggle"}, 1, {}},
      {"Dvorak, both locks", {"dvorak"}, 0, {key::CapsLock, key::NumLock}},
  };
  for (const auto keyboard :
       {DesktopInput::Keyboard::Physical, DesktopInput::Keyboard::Synthetic}) {
    input().setKeyboard(keyboard);
    for (const auto& test : cases) {
      SCOPED_TRACE(test.name);
      setLayout(test.layout, test.group);
      for (const auto lock : test.locks) input().tap(lock);
      pumpAll();
      input().chord({key::Shift, key::Super, key::V});
      EXPECT_EQ(fired(), Fired{2});
      input().chord({key::Super, key::V});
      input().chord({key::Control, key::Shift, key::Super, key::V});
      EXPECT_EQ(fired(), Fired{});
      for (const auto lock : test.locks) input().tap(lock);
    }
  }
  // Control-V and Super-V above reached the terminal, which echoes nothing readable for the latter.
  input().setKeyboard(DesktopInput::Keyboard::Physical);
  setLayout({"us"});
  const auto before = terminal.text();
  input().chord({key::Shift, key::Super, key::V});
  input().type("x");
  EXPECT_TRUE(terminal.waitForText(before + "x"));
}

TEST_F(InputHotKeysTest, FollowsNumLockToAnotherModifier) {
  const auto registration = add(2);
  ASSERT_EQ(desktop()
                .run({"xmodmap", "-e", "remove mod2 = Num_Lock", "-e", "add mod3 = Num_Lock"})
                .status,
            0);
  pumpAll();
  input().tap(key::NumLock);
  input().chord({key::Shift, key::Super, key::V});
  EXPECT_EQ(fired(), Fired{2});
}

TEST_F(InputHotKeysTest, IgnoresAutoRepeat) {
  desktop().run({"xset", "r", "rate", "100", "50"});
  const auto registration = add(2);
  for (int press = 0; press < 2; ++press) {
    input().pressKey(key::Shift);
    input().pressKey(key::Super);
    input().pressKey(key::V);
    pumpFor(std::chrono::milliseconds(500));
    input().releaseKey(key::V);
    pumpFor(std::chrono::milliseconds(20));
    input().releaseKey(key::Super);
    input().releaseKey(key::Shift);
    EXPECT_EQ(fired(), Fired{2});
  }
}

TEST_F(InputHotKeysTest, IsRefusedAsAWholeWhenAnotherProgramHoldsOneVariant) {
  const auto key = static_cast<xcb_keycode_t>(xKeycodeFromMac(keyCode::v));
  X11Connection other;
  const auto mask = static_cast<std::uint16_t>(shiftSuper | XCB_MOD_MASK_2);
  xcb_grab_key(other.get(), 0, other.root(), mask, key, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC);
  other.atom("in order");

  const auto refused = add(2);
  EXPECT_EQ(refused.status, hotKeyStatus::exists);
  EXPECT_FALSE(refused.handle);
  EXPECT_TRUE(waitFor([&] { return !windows().isGrabbedByOthers(key, shiftSuper); }));

  xcb_ungrab_key(other.get(), key, other.root(), mask);
  other.atom("and again");
  const auto granted = add(2);
  EXPECT_EQ(granted.status, hotKeyStatus::noErr);
  EXPECT_TRUE(windows().isGrabbedByOthers(key, mask));
}

TEST_F(InputHotKeysTest, RefusesKeysThatThisSystemDoesNotHave) {
  for (const std::uint32_t code : {0x3Fu, 0x7Fu, 0x80u, 0xFFFFFFFFu})
    EXPECT_EQ(add(1, code).status, hotKeyStatus::invalid) << code;
}

TEST_F(InputHotKeysTest, SharesACombinationUntilTheLastRegistrationEnds) {
  const auto key = static_cast<std::uint8_t>(xKeycodeFromMac(keyCode::v));
  auto first = add(1);
  auto second = add(2);
  ASSERT_EQ(second.status, hotKeyStatus::noErr);
  input().chord({key::Shift, key::Super, key::V});
  EXPECT_EQ(fired(), Fired{1});
  first.handle.reset();
  input().chord({key::Shift, key::Super, key::V});
  EXPECT_EQ(fired(), Fired{2});
  second.handle.reset();
  EXPECT_TRUE(waitFor([&] { return !windows().isGrabbedByOthers(key, shiftSuper); }));
}

TEST_F(InputHotKeysTest, FiresWhileAMenuOfThisProgramIsOpen) {
  const auto registration = add(2);
  QMenu menu;
  menu.addAction("Row");
  menu.popup(QPoint(100, 100));
  ASSERT_TRUE(pumpUntil([&] { return menu.isVisible() && menu.isActiveWindow(); }));
  pumpAll();
  input().chord({key::Shift, key::Super, key::V});
  EXPECT_EQ(fired(), Fired{2});
}

TEST_F(InputHotKeysTest, DeliversNothingOnceItsRegistrationHasEnded) {
  auto registration = add(2);
  input().chord({key::Shift, key::Super, key::V});
  registration.handle.reset();
  EXPECT_EQ(fired(), Fired{});
  registration = add(3);
  handler_.reset();
  handler_ = hotKeys_->setPressedHandler([&](HotKeyIdentity identity) {
    fired_.push_back(identity.id);
    registration.handle.reset();
    handler_.reset();
  });
  input().chord({key::Shift, key::Super, key::V});
  EXPECT_EQ(fired(), Fired{3});
}

TEST_F(InputHotKeysTest, LayoutGivesTheUnshiftedCharacterOfTheLayoutInEffect) {
  const LinuxKeyboardLayout layout;
  struct Case {
    std::vector<std::string> layout;
    unsigned group;
    const char* characters;  // of the positions q, z, -, ', v, ., [, =, `
  };
  const Case cases[] = {
      {{"us"}, 0, "q z - ' v . [ = `"},     {{"de"}, 0, "q y ß ä v . ü ´ ^"},
      {{"ru"}, 0, "й я - э м ю х = ё"},     {{"fr"}, 0, "a w ) ù v : ^ = ²"},
      {{"dvorak"}, 0, "' ; [ - k v / ] `"}, {{"us,ru"}, 1, "й я - э м ю х = ё"},
      {{}, 0, "q z - ' v . [ = `"},         {{}, 1, "й я - э м ю х = ё"},
  };
  for (const auto& test : cases) {
    setLayout(test.layout, test.group);
    pumpAll();
    std::string characters;
    for (const std::uint32_t code : {0x0C, 0x06, 0x1B, 0x27, 0x09, 0x2F, 0x21, 0x18, 0x32})
      characters += (characters.empty() ? "" : " ") + layout.character(code);
    EXPECT_EQ(characters, test.characters);
  }
  setLayout({"us"});
  pumpAll();
  for (std::uint32_t code = 0; code < 128; ++code) {
    const auto key = xKeycodeFromMac(code);
    if (key != 0) {
      EXPECT_EQ(macKeyCodeFromX(key), code);
    }
    if (const char letter = usLetterOfMacKeyCode(code)) {
      EXPECT_EQ(layout.character(code), std::string(1, letter));
    }
  }
  EXPECT_EQ(layout.character(keyCode::escape), "");
  EXPECT_EQ(layout.character(keyCode::leftArrow), "");
  EXPECT_EQ(layout.character(0x3F), "");
}

}  // namespace
}  // namespace zephyx
