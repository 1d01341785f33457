#include <xcb/xcb.h>

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtWidgets/QMenu>
#include <optional>

#include "Platform/Linux/Input/LinuxEventTaps.h"
#include "Platform/Linux/Input/ToolkitEvents.h"
#include "Platform/Linux/X11.h"
#include "Tests/Desktop/InputTest.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr std::uint16_t macKeyK = 40;
constexpr std::uint64_t keys = eventMask(EventType::keyDown);
constexpr std::uint64_t mouse = eventMask(EventType::leftMouseDown);

/// Taps of this process, with a terminal of somebody else beside it.
class InputTapTest : public InputTest {
 protected:
  void SetUp() override {
    InputTest::SetUp();
    taps_.emplace();
    terminal_.emplace(desktop(), TargetProgram::Kind::Terminal);
  }
  void TearDown() override {
    tap_.reset();
    taps_.reset();
    terminal_.reset();
    InputTest::TearDown();
  }

  TargetProgram& terminal() { return *terminal_; }
  EventTapCreation create(std::uint64_t mask) {
    return taps_->createEventTap(mask, {.event = [this](const Event& e) { events_.push_back(e); },
                                        .invalidated = [this] { hasEnded_ = true; }});
  }
  void lock(std::uint64_t mask) {
    tap_ = create(mask).tap;
    ASSERT_TRUE(tap_);
  }
  /// The events since the last call, up to now.
  std::vector<Event> events() {
    pumpAll();
    return std::exchange(events_, {});
  }
  /// Presses a letter and tells whether the terminal gets it, without handling events here.
  bool isTyped(char letter) {
    const auto before = terminal().text();
    input().type(std::string(1, letter));
    return terminal().waitForText(before + letter);
  }
  /// Whether another program could have the device now.
  bool isFree(std::uint64_t mask) {
    X11Connection other;
    const auto status = grab(other, mask);
    return status == XCB_GRAB_STATUS_SUCCESS;
  }
  static std::uint8_t grab(X11Connection& program, std::uint64_t mask) {
    if (mask == keys) {
      return XReply<xcb_grab_keyboard_reply_t>(
                 xcb_grab_keyboard_reply(
                     program.get(),
                     xcb_grab_keyboard(program.get(), 0, program.root(), XCB_CURRENT_TIME,
                                       XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC),
                     nullptr))
          ->status;
    }
    return XReply<xcb_grab_pointer_reply_t>(
               xcb_grab_pointer_reply(
                   program.get(),
                   xcb_grab_pointer(program.get(), 0, program.root(), 0, XCB_GRAB_MODE_ASYNC,
                                    XCB_GRAB_MODE_ASYNC, XCB_NONE, XCB_NONE, XCB_CURRENT_TIME),
                   nullptr))
        ->status;
  }

  std::unique_ptr<EventTap> tap_;
  std::vector<Event> events_;
  bool hasEnded_ = false;

 private:
  std::optional<LinuxEventTaps> taps_;
  std::optional<TargetProgram> terminal_;
};

TEST_F(InputTapTest, NamesKeysByPositionWhateverLocksAndLayoutAre) {
  for (const auto& [layout, lock] : std::vector<std::pair<const char*, std::uint8_t>>{
           {"us", key::CapsLock}, {"us", key::NumLock}, {"dvorak", 0}, {"ru", key::NumLock}}) {
    setLayout({layout});
    if (lock) input().tap(lock);
    InputTapTest::lock(keys);
    input().chord({key::Control, key::Alt, key::Super, key::K});
    const auto seen = events();
    ASSERT_EQ(seen.size(), 4u);
    EXPECT_EQ(seen[0].type, EventType::flagsChanged);
    EXPECT_EQ(seen[3].type, EventType::keyDown);
    EXPECT_EQ(seen[3].keyCode, macKeyK);
    EXPECT_EQ(seen[3].modifierFlags,
              eventModifier::control | eventModifier::option | eventModifier::command);
    tap_.reset();
    if (lock) input().tap(lock);
  }
}

TEST_F(InputTapTest, AKeyThatStaysDownIsReportedAsSuchAndIsNobodysNewsWhenTheTapEnds) {
  desktop().run({"xset", "r", "rate", "100", "50"});
  lock(keys);
  input().pressKey(key::K);
  ASSERT_TRUE(pumpUntil([&] { return events_.size() > 3; }));
  EXPECT_FALSE(events_[0].isRepeat);
  EXPECT_TRUE(events_[1].isRepeat);
  EXPECT_TRUE(events_[3].isRepeat);
  tap_.reset();
  pumpFor(milliseconds(300));
  EXPECT_EQ(terminal().text(), "");
  EXPECT_FALSE(isFree(keys));
  input().releaseKey(key::K);
  EXPECT_TRUE(pumpUntil([&] { return isFree(keys); }));
  EXPECT_TRUE(isTyped('a'));
}

TEST_F(InputTapTest, WaitsForNobodyAndSaysThatAnotherProgramHasTheDevice) {
  for (const auto mask : {keys, mouse}) {
    {
      X11Connection other;
      ASSERT_EQ(grab(other, mask), XCB_GRAB_STATUS_SUCCESS);
      const auto [tap, isBusy] = create(keys | mouse);
      EXPECT_FALSE(tap);
      EXPECT_TRUE(isBusy);
      EXPECT_TRUE(isFree(mask == keys ? mouse : keys)) << "half a lock";
    }
    EXPECT_TRUE(pumpUntil([&] { return create(keys | mouse).tap != nullptr; }));
  }
}

TEST_F(InputTapTest, AStalledMainLoopGivesTheDevicesBackWithinTwoSecondsAndHearsOfItLater) {
  for (const auto mask : {keys, mouse}) {
    lock(mask);
    pumpFor(milliseconds(100));
    EXPECT_FALSE(isFree(mask));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(waitFor([&] { return isFree(mask); }));  // this is the main thread
    EXPECT_LT(std::chrono::steady_clock::now() - start, seconds(2) * patience());
    if (mask == keys) {
      EXPECT_TRUE(isTyped('a'));
    }
    ASSERT_TRUE(pumpUntil([&] { return !events_.empty(); }));
    EXPECT_EQ(events_.back().type, EventType::tapDisabledByTimeout);
    EXPECT_TRUE(isFree(mask));
    EXPECT_TRUE(tap_->enable());
    pumpFor(milliseconds(100));
    EXPECT_FALSE(isFree(mask));
    tap_.reset();
    EXPECT_TRUE(isFree(mask));
    events_.clear();
  }
}

TEST_F(InputTapTest, AMenuOfThisProgramOpensAndClosesUnderALockedKeyboardAndHearsNoKey) {
  lock(keys);
  QMenu menu;
  menu.addAction("Row");
  menu.popup(QPoint(300, 300));
  ASSERT_TRUE(pumpUntil([&] { return menu.isVisible() && menu.isActiveWindow(); }));
  pumpFor(milliseconds(100));
  input().tap(key::Escape);
  EXPECT_EQ(events().size(), 1u);
  EXPECT_TRUE(menu.isVisible());
  input().click(20, 700);
  EXPECT_TRUE(pumpUntil([&] { return !menu.isVisible(); }));
  pumpFor(milliseconds(100));
  EXPECT_FALSE(isFree(keys));
  input().type("a");
  EXPECT_EQ(events().size(), 1u);
  tap_.reset();
  EXPECT_TRUE(isTyped('b'));
  EXPECT_EQ(terminal().text(), "b");
}

TEST_F(InputTapTest, AKeyboardThatIsLostAllTheSameIsTakenBackOrMissed) {
  lock(keys);
  // As a program does that types for the user.
  xcb_ungrab_keyboard(toolkitConnection(), XCB_CURRENT_TIME);
  xcb_flush(toolkitConnection());
  EXPECT_TRUE(pumpUntil([&] { return !isFree(keys); }));
  EXPECT_TRUE(events().empty());

  xcb_ungrab_keyboard(toolkitConnection(), XCB_CURRENT_TIME);
  xcb_flush(toolkitConnection());
  X11Connection other;
  ASSERT_TRUE(waitFor([&] { return grab(other, keys) == XCB_GRAB_STATUS_SUCCESS; }));
  ASSERT_TRUE(pumpUntil([&] { return !events_.empty(); }));
  EXPECT_EQ(events_.back().type, EventType::tapDisabledByUserInput);
  EXPECT_FALSE(tap_->enable());
}

class InputPauseTest : public InputTapTest {
 protected:
  InputPauseTest() { options_.sessionBus = true; }
};

TEST_F(InputPauseTest, EndsBeforeSleepAndBeforeTheSessionIsLocked) {
  const auto address = desktop().environment().at("DBUS_SESSION_BUS_ADDRESS");
  setenv("DBUS_SYSTEM_BUS_ADDRESS", address.c_str(), 1);
  auto bus = QDBusConnection::connectToBus(QDBusConnection::SystemBus, "log-in manager");
  if (!bus.isConnected()) {
    GTEST_SKIP() << "the toolkit met another system bus in an earlier test of this process";
  }
  ASSERT_TRUE(bus.registerService("org.freedesktop.login1"));
  struct Case {
    const char* path;
    const char* interface;
    const char* name;
    QList<QVariant> arguments;
    bool ends;
  };
  const Case cases[] = {
      {"/org/freedesktop/login1",
       "org.freedesktop.login1.Manager",
       "PrepareForSleep",
       {true},
       true},
      {"/org/freedesktop/login1",
       "org.freedesktop.login1.Manager",
       "PrepareForSleep",
       {false},
       false},
      {"/org/freedesktop/login1/session/_32", "org.freedesktop.login1.Session", "Lock", {}, true},
      {"/org/freedesktop/login1/session/_32",
       "org.freedesktop.login1.Session",
       "Unlock",
       {},
       false},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    lock(keys);
    hasEnded_ = false;
    auto signal = QDBusMessage::createSignal(each.path, each.interface, each.name);
    signal.setArguments(each.arguments);
    bus.send(signal);
    EXPECT_EQ(pumpUntil([&] { return hasEnded_; }, each.ends ? seconds(5) : milliseconds(300)),
              each.ends);
    EXPECT_EQ(isFree(keys), each.ends);
    tap_.reset();
  }
  QDBusConnection::disconnectFromBus("log-in manager");
}

TEST_F(InputTapTest, ATappedMouseClicksNothing) {
  QWidget own;
  own.setGeometry(700, 100, 200, 200);
  own.show();
  ASSERT_TRUE(pumpUntil([&] { return own.isActiveWindow(); }));
  const auto& there = terminal().window();
  lock(mouse);
  input().click(there.centerX(), there.centerY());
  pumpFor(milliseconds(200));
  EXPECT_TRUE(own.isActiveWindow());
  EXPECT_FALSE(terminal().isActive());
  tap_.reset();
  input().click(there.centerX(), there.centerY());
  EXPECT_TRUE(pumpUntil([&] { return terminal().isActive(); }));
}

}  // namespace
}  // namespace zephyx
