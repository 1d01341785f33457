#include <xcb/xcb.h>

#include "Platform/Events.h"
#include "Platform/Linux/Input/KeyCodes.h"
#include "Platform/Linux/Input/LinuxHotKeys.h"
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

}  // namespace
}  // namespace zephyx
