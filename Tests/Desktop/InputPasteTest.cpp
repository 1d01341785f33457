
#include <QtWidgets/QMenu>
#include <algorithm>

#include "Platform/Events.h"
#include "Platform/Linux/Clipboard/LinuxPasteboard.h"
#include "Platform/Linux/Input/LinuxEventPoster.h"
#include "Platform/Linux/Input/LinuxHotKeys.h"
#include "Platform/Workspace.h"
#include "Tests/Desktop/InputTest.h"

namespace zephyx {
namespace {

using Kind = TargetProgram::Kind;
using Keys = std::vector<std::uint8_t>;

constexpr std::uint32_t allButShift =
    carbonModifier::control | carbonModifier::option | carbonModifier::command;

class InputPasteTest : public InputTest {
 protected:
  void SetUp() override {
    InputTest::SetUp();
    pasteboard_ = std::make_unique<LinuxPasteboard>(
        [](int) { return std::shared_ptr<RunningApplication>(); });
    hotKeys_ = std::make_unique<LinuxHotKeys>();
    poster_ = std::make_unique<LinuxEventPoster>(*pasteboard_, hotKeys_.get());
    handler_ = hotKeys_->setPressedHandler([this](HotKeyIdentity) {
      ++fired_;
      paste();
    });
  }
  void TearDown() override {
    handler_.reset();
    poster_.reset();
    hotKeys_.reset();
    pasteboard_.reset();
    InputTest::TearDown();
  }

  void copy(const std::string& text) {
    pasteboard_->clearContents();
    ASSERT_TRUE(pasteboard_->writeString(text));
  }
  void paste() {
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_TRUE(poster_->postKey(keyCode::v, eventModifier::command));
    durations_.push_back(std::chrono::steady_clock::now() - begin);
  }
  HotKeyRegistration addHotKey(std::uint32_t keyCode, std::uint32_t modifiers) {
    auto registration = hotKeys_->registerHotKey(keyCode, modifiers, {1, 1});
    EXPECT_EQ(registration.status, hotKeyStatus::noErr);
    return registration;
  }
  static bool arrives(const TargetProgram& target, const std::string& text) {
    const bool arrived = runUntil([&] { return target.text() == text; });
    if (!arrived) ADD_FAILURE() << "got: " << target.text();
    return arrived;
  }
  bool noKeyIsDown() {
    return runUntil([&] { return input().pressedKeys().empty(); }, std::chrono::seconds(1));
  }

  std::unique_ptr<LinuxPasteboard> pasteboard_;
  std::unique_ptr<LinuxHotKeys> hotKeys_;
  std::unique_ptr<LinuxEventPoster> poster_;
  Registration handler_;
  int fired_ = 0;
  std::vector<std::chrono::steady_clock::duration> durations_;
};

TEST_F(InputPasteTest, ArrivesOncePerPressWhileTheHotKeyIsHeld) {
  desktop().run({"xset", "r", "rate", "120", "50"});
  struct HotKey {
    std::uint32_t keyCode;
    std::uint32_t modifiers;
    Keys keys;
  };
  const HotKey hotKeys[] = {
      {17, allButShift, {key::Control, key::Alt, key::Super, key::T}},
      // The chord that is typed is itself a hot key.
      {keyCode::v, carbonModifier::control, {key::Control, key::V}},
  };
  for (const auto& hotKey : hotKeys) {
    SCOPED_TRACE(hotKey.keyCode);
    TargetProgram target(desktop(), Kind::Qt);
    const auto registration = addHotKey(hotKey.keyCode, hotKey.modifiers);
    fired_ = 0;
    copy("one;");
    for (const auto key : hotKey.keys) input().pressKey(key);
    ASSERT_TRUE(runUntil([&] { return fired_ == 1; }));
    // Long enough for many repeats.
    runFor(std::chrono::milliseconds(400));
    EXPECT_EQ(fired_, 1);
    // The modifiers stay down; only the key is pressed again.
    input().releaseKey(hotKey.keys.back());
    input().tap(hotKey.keys.back());
    EXPECT_TRUE(runUntil([&] { return fired_ == 2; }));
    for (auto key = hotKey.keys.rbegin() + 1; key != hotKey.keys.rend(); ++key)
      input().releaseKey(*key);
    EXPECT_TRUE(noKeyIsDown());
    EXPECT_TRUE(arrives(target, "one;one;"));
  }
}

TEST_F(InputPasteTest, FindsTheKeyInEveryLayout) {
  struct Case {
    std::vector<std::string> layout;
    unsigned group;
    bool capsLock;
  };
  const Case cases[] = {{{"dvorak"}, 0, false}, {{"fr", "bepo"}, 0, false}, {{"us,ru"}, 1, false},
                        {{"us"}, 0, true},      {{"ru,dvorak"}, 0, false},  {{"de"}, 0, false}};
  for (const auto kind : {Kind::Gtk, Kind::Qt}) {
    TargetProgram target(desktop(), kind);
    std::string expected;
    for (const auto& test : cases) {
      SCOPED_TRACE(TargetProgram::name(kind) + ", " + test.layout.front());
      setLayout(test.layout, test.group);
      if (test.capsLock) input().tap(key::CapsLock);
      pumpAll();
      copy("in " + test.layout.front() + ".");
      paste();
      expected += "in " + test.layout.front() + ".";
      runFor(std::chrono::milliseconds(50));
      EXPECT_EQ(input().lockedLayout(), test.group);
      if (test.capsLock) input().tap(key::CapsLock);
      setLayout({"us"});
      pumpAll();
      EXPECT_TRUE(arrives(target, expected));
    }
    target.process().terminate();
  }
}

TEST_F(InputPasteTest, KeepsKeysThatTheUserHoldsAndLetsGoOfThemWithTheUser) {
  TargetProgram target(desktop(), Kind::Qt);
  copy("held");
  input().pressKey(key::Super);
  input().pressKey(key::Shift);
  input().pressKey(key::Return);
  paste();
  EXPECT_TRUE(runUntil([&] { return input().pressedKeys() == Keys{key::Shift, key::Super}; }));
  EXPECT_TRUE(arrives(target, "held"));
  input().releaseKey(key::Return);
  input().releaseKey(key::Super);
  EXPECT_TRUE(runUntil([&] { return input().pressedKeys() == Keys{key::Shift}; }));
  input().releaseKey(key::Shift);
  EXPECT_TRUE(noKeyIsDown());
  // Nothing is left behind on the synthesizing keyboard either: a press by another program arrives.
  runFor(std::chrono::milliseconds(120));
  input().setKeyboard(DesktopInput::Keyboard::Synthetic);
  input().chord({key::Control, key::A});
  input().chord({key::Shift, key::A});
  EXPECT_TRUE(arrives(target, "A"));
}

TEST_F(InputPasteTest, PastesWhatWasWrittenInTheSameMomentWithoutHoldingTheHostUp) {
  TargetProgram target(desktop(), Kind::Qt);
  std::string expected;
  for (int round = 0; round < 20; ++round) {
    desktop().copy("of another program");
    pumpAll();
    copy(std::to_string(round) + ".");
    paste();
    expected += std::to_string(round) + ".";
    EXPECT_TRUE(arrives(target, expected));
  }
  std::sort(durations_.begin(), durations_.end());
  EXPECT_LT(durations_[durations_.size() / 2], std::chrono::milliseconds(20) * patience());
}

TEST_F(InputPasteTest, TypesTheChordsOfTerminals) {
  // Terminals of the other family, in the shape of xterm with their class and their binding.
  const auto file = desktop().home() / "typed";
  const auto terminal = desktop().start(
      {"xterm", "-class", "Alacritty", "-xrm",
       "*VT100.translations: #override Ctrl Shift <Key>V: insert-selection(CLIPBOARD)\\n"
       "Ctrl Shift <Key>C: string(copied;)",
       "-e", "sh", "-c", "stty -icanon; exec cat >>\"$0\"", file.string()});
  const auto window = windows().waitForClass("Alacritty");
  ASSERT_TRUE(windows().activate(window.id));
  // Such a terminal does not look for the letter in other layouts than the one in effect.
  const std::pair<const char*, unsigned> layouts[] = {{"us", 0}, {"us,ru", 1}};
  std::string typed;
  for (const auto& [layout, group] : layouts) {
    SCOPED_TRACE(layout);
    setLayout({layout}, group);
    pumpAll();
    copy("pasted;");
    paste();
    typed += "pasted;";
    EXPECT_TRUE(runUntil([&] { return readFile(file) == typed; })) << readFile(file);
    EXPECT_TRUE(poster_->postKey(keyCode::c, eventModifier::command));
    typed += "copied;";
    EXPECT_TRUE(runUntil([&] { return readFile(file) == typed; })) << readFile(file);
    EXPECT_EQ(input().lockedLayout(), group);
  }
  // No key is Control and Shift then, but the layout is not switched over it.
  setLayout({"us,ru", "-option", "grp:ctrl_shift_toggle"});
  pumpAll();
  paste();
  EXPECT_EQ(input().lockedLayout(), 0u);
  setLayout({"us", "-option", ""});

  // Control-C would end what runs in an xterm.
  TargetProgram xterm(desktop(), Kind::Terminal);
  EXPECT_TRUE(poster_->postKey(keyCode::c, eventModifier::command));
  input().type("alive");
  EXPECT_TRUE(arrives(xterm, "alive"));
}

TEST_F(InputPasteTest, AHotKeyPastesIntoTheProgramInFrontWhileAMenuOfThisProgramIsOpen) {
  TargetProgram target(desktop(), Kind::Qt);
  QMenu menu;
  menu.addAction("Row");
  menu.popup(QPoint(600, 400));
  ASSERT_TRUE(runUntil([&] { return menu.isVisible() && menu.isActiveWindow(); }));
  pumpAll();
  const auto registration = addHotKey(17, allButShift);
  copy("past the menu");
  input().chord({key::Control, key::Alt, key::Super, key::T});
  EXPECT_TRUE(arrives(target, "past the menu"));
}

}  // namespace
}  // namespace zephyx
