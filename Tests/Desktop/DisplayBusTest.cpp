#include <gmock/gmock.h>

#include <QtCore/QCoreApplication>
#include <cerrno>
#include <optional>

#include "Platform/Linux/Displays/I2cChannel.h"
#include "Platform/Linux/Displays/LinuxDisplays.h"
#include "Platform/Linux/LinuxDispatch.h"
#include "Runner/ExternalDisplayBrightness.h"
#include "Tests/Desktop/FakeDisplayBuses.h"
#include "Tests/Desktop/WaitFor.h"
#include "Tests/Linux/ConnectorTree.h"
#include "Tests/Simulated/SimulatedDesktop.h"
#include "Tests/Simulated/SimulatedPlatform.h"

namespace zephyx {
namespace {

using testing::IsEmpty;
using testing::SizeIs;
using Bus = FakeDisplayBuses::Bus;

/// The host's brightness on this system's displays and queues; all else is simulated.
class BusPlatform final : public SimulatedPlatform {
 public:
  BusPlatform(SimulatedDesktop& desktop, LinuxDispatch& dispatch, LinuxDisplays& displays)
      : SimulatedPlatform(desktop), dispatch_(dispatch), displays_(displays) {}
  Dispatch& dispatch() override { return dispatch_; }
  Displays& displays() override { return displays_; }

 private:
  LinuxDispatch& dispatch_;
  LinuxDisplays& displays_;
};

class DisplayBusTest : public testing::Test {
 protected:
  void SetUp() override {
    if (const auto reason = FakeDisplayBuses::missing(); !reason.empty()) GTEST_SKIP() << reason;
    buses_.emplace();
    displays_.emplace(nullptr, "", DeviceRoots{connectors_.root(), buses_->folder()});
    platform_.emplace(desktop_, dispatch_, *displays_);
    // A panel in the computer's case, on a bus that would obey.
    connectors_.linkBus(connectors_.add("card0-eDP-1", "connected"), Bus::obeying);
  }

  FakeDisplayBuses& buses() { return *buses_; }
  void connect(const std::string& connector, Bus bus) {
    connectors_.linkBus(connectors_.add("card0-" + connector, "connected"), bus);
  }
  ExternalDisplayBrightness& brightness() {
    if (!brightness_) brightness_.emplace(*platform_);
    return *brightness_;
  }
  LinuxDisplays& displays() { return *displays_; }
  [[nodiscard]] static bool becomesTrue(const std::function<bool()>& condition) {
    return waitFor([&] {
      QCoreApplication::processEvents();
      return condition();
    });
  }
  [[nodiscard]] bool waitForWrites(Bus bus, std::size_t count) {
    return becomesTrue([&] { return buses().writes(bus).size() >= count; });
  }

 private:
  int argc_ = 0;
  QCoreApplication application_{argc_, nullptr};
  std::optional<FakeDisplayBuses> buses_;
  ConnectorTree connectors_;
  SimulatedDesktop desktop_;
  LinuxDispatch dispatch_;
  std::optional<LinuxDisplays> displays_;
  std::optional<BusPlatform> platform_;
  std::optional<ExternalDisplayBrightness> brightness_;
};

TEST_F(DisplayBusTest, TheWireCarriesTheWholeMessage) {
  connect("HDMI-A-1", Bus::obeying);
  const std::pair<double, const char*> cases[] = {
      {0, "37: 51 84 03 10 00 00 a8"},
      {0.3, "37: 51 84 03 10 00 00 a8"},
      {0.5, "37: 51 84 03 10 00 1d b5"},
      {1, "37: 51 84 03 10 00 64 cc"},
  };
  std::size_t count = 0;
  for (const auto& [level, bytes] : cases) {
    brightness().setBrightness(level);
    ASSERT_TRUE(waitForWrites(Bus::obeying, ++count));
    EXPECT_EQ(buses().writes(Bus::obeying).back().bytes, bytes) << level;
  }
}

TEST_F(DisplayBusTest, ABusThatHangsOrFailsHoldsUpNeitherTheMainThreadNorTheOtherBuses) {
  connect("HDMI-A-1", Bus::failing);
  connect("HDMI-A-2", Bus::hanging);
  connect("DP-1", Bus::obeying);
  brightness().setBrightness(1);
  ASSERT_TRUE(waitForWrites(Bus::hanging, 1));
  // While it hangs, values come and go on the main thread.
  for (const double level : {0.9, 0.8, 0.5}) {
    const auto start = std::chrono::steady_clock::now();
    brightness().setBrightness(level);
    EXPECT_LT(std::chrono::steady_clock::now() - start,
              std::chrono::milliseconds(100) * patience());
  }
  ASSERT_TRUE(waitForWrites(Bus::failing, 2));
  EXPECT_EQ(buses().writes(Bus::failing).back().bytes, "37: 51 84 03 10 00 1d b5");
  ASSERT_TRUE(waitForWrites(Bus::obeying, 2));
  EXPECT_EQ(buses().writes(Bus::obeying).back().bytes, "37: 51 84 03 10 00 1d b5");
  ASSERT_TRUE(waitForWrites(Bus::hanging, 2));
  EXPECT_EQ(buses().writes(Bus::hanging).back().bytes, "37: 51 84 03 10 00 1d b5");
}

TEST_F(DisplayBusTest, ADisplayThatGoesDuringAWriteIsNotFoundAgain) {
  connect("DP-1", Bus::vanishing);
  const auto channels = displays().externalChannels();
  ASSERT_THAT(channels, SizeIs(1));
  const Bytes packet{0x84, 0x03, 0x10, 0, 50, 0x9A};
  EXPECT_EQ(channels.front()->writeI2C(0x37, 0x51, packet), ENODEV);
  EXPECT_EQ(channels.front()->writeI2C(0x37, 0x51, packet), ENOENT);
  EXPECT_THAT(displays().externalChannels(), IsEmpty());
  EXPECT_THAT(buses().writes(Bus::vanishing), SizeIs(1));

  EXPECT_EQ(I2cChannel(buses().path(Bus::failing)).writeI2C(0x37, 0x51, packet), EREMOTEIO);
  EXPECT_EQ(I2cChannel(buses().path(Bus::obeying)).writeI2C(0x36, 0x51, packet), EBUSY);
}

}  // namespace
}  // namespace zephyx
