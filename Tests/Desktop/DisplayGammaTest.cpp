#include <gtest/gtest.h>

#include <optional>

#include "Platform/Linux/Displays/LinuxDisplays.h"
#include "Tests/Desktop/DesktopRamps.h"
#include "Tests/Desktop/VirtualDesktop.h"

namespace zephyx {
namespace {

using Ramp = DesktopRamps::Ramp;

class DisplayGammaTest : public testing::Test {
 protected:
  DisplayGammaTest() {
    desktop_.enter();
    witness_.emplace();
    output_ = witness_->outputs().at(0);
  }

  DesktopRamps& witness() { return *witness_; }
  Ramp shown() { return witness().ramp(output_); }
  void userSets(const Ramp& ramp) { witness().setRamp(output_, ramp); }
  std::uint32_t id() { return witness().crtcOf(output_); }
  const std::string& output() const { return output_; }
  std::string rampFile() const { return (desktop_.home() / "ramps").string(); }

  const X11Connection& connection() {
    if (!connection_) connection_.emplace();
    return *connection_;
  }

 private:
  VirtualDesktop desktop_{{.windowManager = false}};
  std::optional<DesktopRamps> witness_;
  std::optional<X11Connection> connection_;
  std::string output_;
};

TEST_F(DisplayGammaTest, WhatAnotherProgramSetsMeanwhileIsTheUsersFromThenOn) {
  const auto night = DesktopRamps::linear(1, 0.7, 0.4);
  {
    LinuxDisplays displays(connection().get(), rampFile());
    EXPECT_TRUE(displays.setTransferMaximum(id(), 0.5));
    userSets(night);
    EXPECT_TRUE(displays.setTransferMaximum(id(), 0.5));
    EXPECT_LE(DesktopRamps::distance(shown(), DesktopRamps::linear(0.5, 0.35, 0.2)), 1);
    EXPECT_TRUE(displays.setTransferMaximum(id(), 1));
    EXPECT_EQ(shown(), night);

    EXPECT_TRUE(displays.setTransferMaximum(id(), 0.5));
    userSets(DesktopRamps::linear(0.9, 0.9, 0.9));
  }
  EXPECT_EQ(shown(), DesktopRamps::linear(0.9, 0.9, 0.9));
}

TEST_F(DisplayGammaTest, APanelInTheComputersCaseIsBuiltInWhateverItIsCalled) {
  LinuxDisplays displays(connection().get(), rampFile());
  EXPECT_TRUE(displays.setTransferMaximum(id(), 0.5));
  // What was an external display's CRTC lights the panel now.
  witness().sayIsPanel(output());
  EXPECT_EQ(displays.onlineDisplays(), (std::vector{Display{id(), true}}));
  EXPECT_EQ(shown(), DesktopRamps::linear(1, 1, 1));
}

TEST(DisplayOutputsTest, EachDisplayHasARampOfItsOwnThatStaysBehindWhenItIsPulledOut) {
  std::optional<VirtualDesktop> desktop;
  try {
    desktop.emplace(VirtualDesktopOptions{.windowManager = false, .outputs = true});
  } catch (const std::runtime_error& error) {
    GTEST_SKIP() << error.what();
  }
  desktop->enter();
  const auto xrandr = [&](std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), "xrandr");
    ASSERT_EQ(desktop->run(arguments).status, 0);
  };
  DesktopRamps witness;
  const auto first = witness.outputs().at(0);
  const std::string second = "DUMMY1";
  const auto plugIn = [&] {
    xrandr({"--addmode", second, "1280x800"});
    xrandr({"--output", second, "--mode", "1280x800", "--right-of", first});
    ASSERT_EQ(witness.outputs(), (std::vector{first, second}));
  };
  plugIn();
  const auto warm = DesktopRamps::linear(1, 0.8, 0.5);
  const auto identity = DesktopRamps::linear(1, 1, 1);
  witness.setRamp(first, identity);
  witness.setRamp(second, warm);

  const X11Connection connection;
  std::optional<LinuxDisplays> displays(std::in_place, connection.get(), "");
  const auto ids = displays->onlineDisplays();
  ASSERT_EQ(ids.size(), 2u);
  for (const auto& each : ids) EXPECT_TRUE(displays->setTransferMaximum(each.id, 0.4));
  EXPECT_LE(DesktopRamps::distance(witness.ramp(first), DesktopRamps::linear(0.4, 0.4, 0.4)), 1);
  EXPECT_LE(DesktopRamps::distance(witness.ramp(second), DesktopRamps::linear(0.4, 0.32, 0.2)), 1);

  xrandr({"--output", second, "--off"});
  EXPECT_EQ(displays->onlineDisplays().size(), 1u);
  plugIn();
  EXPECT_EQ(witness.ramp(second), warm);
  EXPECT_LE(DesktopRamps::distance(witness.ramp(first), DesktopRamps::linear(0.4, 0.4, 0.4)), 1);
  displays.reset();
  EXPECT_EQ(witness.ramp(first), identity);
  EXPECT_EQ(witness.ramp(second), warm);
}

}  // namespace
}  // namespace zephyx
