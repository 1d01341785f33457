#include <xcb/xcb.h>

#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <optional>

#include "Platform/Linux/Input/LinuxEventTaps.h"
#include "Platform/Linux/Input/ToolkitEvents.h"
#include "Tests/Desktop/GrabbingProgram.h"
#include "Tests/Desktop/InputTest.h"

namespace zephyx {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

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
  static bool take(GrabbingProgram& program, std::uint64_t mask) {
    return mask == keys ? program.takeKeyboard() : program.takePointer();
  }
  /// Whether another program could have the device now.
  bool isFree(std::uint64_t mask) {
    GrabbingProgram other;
    return take(other, mask);
  }

  std::unique_ptr<EventTap> tap_;
  std::vector<Event> events_;
  bool hasEnded_ = false;

 private:
  std::optional<LinuxEventTaps> taps_;
  std::optional<TargetProgram> terminal_;
};

TEST_F(InputTapTest, WaitsForNobodyAndSaysThatAnotherProgramHasTheDevice) {
  for (const auto mask : {keys, mouse}) {
    {
      GrabbingProgram other;
      ASSERT_TRUE(take(other, mask));
      const auto [tap, isBusy] = create(keys | mouse);
      EXPECT_FALSE(tap);
      EXPECT_TRUE(isBusy);
      EXPECT_TRUE(isFree(mask == keys ? mouse : keys)) << "half a lock";
    }
    EXPECT_TRUE(runUntil([&] { return create(keys | mouse).tap != nullptr; }));
  }
}

TEST_F(InputTapTest, AStalledMainLoopGivesTheDevicesBackWithinTwoSecondsAndHearsOfItLater) {
  for (const auto mask : {keys, mouse}) {
    lock(mask);
    runFor(milliseconds(100));
    EXPECT_FALSE(isFree(mask));
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(waitFor([&] { return isFree(mask); }));  // this is the main thread
    EXPECT_LT(std::chrono::steady_clock::now() - start, seconds(2) * patience());
    if (mask == keys) {
      EXPECT_TRUE(isTyped('a'));
    }
    ASSERT_TRUE(runUntil([&] { return !events_.empty(); }));
    EXPECT_EQ(events_.back().type, EventType::tapDisabledByTimeout);
    EXPECT_TRUE(isFree(mask));
    EXPECT_TRUE(tap_->enable());
    runFor(milliseconds(100));
    EXPECT_FALSE(isFree(mask));
    tap_.reset();
    EXPECT_TRUE(isFree(mask));
    events_.clear();
  }
}

TEST_F(InputTapTest, AKeyboardThatIsLostAllTheSameIsTakenBackOrMissed) {
  lock(keys);
  // As a program does that types for the user.
  xcb_ungrab_keyboard(toolkitConnection(), XCB_CURRENT_TIME);
  xcb_flush(toolkitConnection());
  EXPECT_TRUE(runUntil([&] { return !isFree(keys); }));
  EXPECT_TRUE(events().empty());

  xcb_ungrab_keyboard(toolkitConnection(), XCB_CURRENT_TIME);
  xcb_flush(toolkitConnection());
  GrabbingProgram other;
  ASSERT_TRUE(waitFor([&] { return other.takeKeyboard(); }));
  ASSERT_TRUE(runUntil([&] { return !events_.empty(); }));
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
  const QString path = "/org/freedesktop/login1", interface = "org.freedesktop.login1.";
  const struct {
    const char* name;
    QDBusMessage signal;
    bool ends;
  } cases[] = {
      {"sleep", QDBusMessage::createSignal(path, interface + "Manager", "PrepareForSleep") << true,
       true},
      {"wake", QDBusMessage::createSignal(path, interface + "Manager", "PrepareForSleep") << false,
       false},
      {"lock", QDBusMessage::createSignal(path + "/session/_32", interface + "Session", "Lock"),
       true},
      {"unlock", QDBusMessage::createSignal(path + "/session/_32", interface + "Session", "Unlock"),
       false},
  };
  for (const auto& each : cases) {
    SCOPED_TRACE(each.name);
    lock(keys);
    hasEnded_ = false;
    bus.send(each.signal);
    EXPECT_EQ(runUntil([&] { return hasEnded_; }, each.ends ? seconds(5) : milliseconds(300)),
              each.ends);
    EXPECT_EQ(isFree(keys), each.ends);
    tap_.reset();
  }
  QDBusConnection::disconnectFromBus("log-in manager");
}

}  // namespace
}  // namespace zephyx
