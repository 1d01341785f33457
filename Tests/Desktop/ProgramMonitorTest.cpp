#include <algorithm>

#include "Tests/Desktop/ProgramTest.h"
#include "Tests/Linux/SensorTree.h"

namespace zephyx {
namespace {

using Picture = std::vector<std::uint32_t>;

constexpr std::uint32_t yellow = 0xffd60a;
constexpr std::uint32_t red = 0xff453a;

/// The rings in the menu of the running program, on a machine whose sensors are files.
class ProgramMonitorTest : public ProgramTest {
 protected:
  static void SetUpTestSuite() {
    desktop_ = std::make_unique<VirtualDesktop>(VirtualDesktopOptions{.tray = true});
    startProgram({{"ZEPHYX_HWMON", sensors().folder()}});
  }
  static SensorTree sensors() { return SensorTree(desktop_->home() / "hwmon"); }

  void SetUp() override {
    ProgramTest::SetUp();
    ASSERT_TRUE(program().openMenu());
    menu_ = program().menu().value();
  }
  void TearDown() override {
    EXPECT_TRUE(program().leaveMenu());
    ProgramTest::TearDown();
  }

  /// Four rings, 76 apart, stand in the middle of the first row; the temperature's is the second.
  int temperatureX() const { return (menu_.width - 288) / 2 + 76; }
  Picture temperatureRing() {
    return windows().pixels(menu_.id, temperatureX(), rowY + 12, 60, 60);
  }
  Picture row() { return windows().pixels(menu_.id, 1, rowY, menu_.width - 2, 84); }
  bool shows(std::uint32_t color) {
    const auto picture = temperatureRing();
    return std::count_if(picture.begin(), picture.end(),
                         [&](std::uint32_t pixel) { return (pixel & 0xffffff) == color; }) > 50;
  }

  static constexpr int rowY = 7;  ///< below the menu's border
  DesktopWindow menu_;
};

TEST_F(ProgramMonitorTest, ATemperatureAddsARingWhoseColourAndValueFollowIt) {
  const auto threeRings = row();
  EXPECT_FALSE(shows(yellow));
  sensors().setProcessor("72000");
  EXPECT_TRUE(waitFor([&] { return shows(yellow); }));
  EXPECT_NE(row(), threeRings);
  sensors().setProcessor("90000");
  EXPECT_TRUE(waitFor([&] { return shows(red); }));

  const auto symbol = temperatureRing();
  input().movePointer(menu_.x + temperatureX() + 30, menu_.y + rowY + 36);
  EXPECT_TRUE(waitFor([&] { return temperatureRing() != symbol; }));
  input().movePointer(menu_.x + temperatureX() + 30, menu_.y + rowY + 82);
  EXPECT_TRUE(waitFor([&] { return temperatureRing() == symbol; }));
}

}  // namespace
}  // namespace zephyx
