#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <filesystem>
#include <functional>
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

  /// The service in a process of its own, which is killed.
  void inKilledProcess(const std::function<void(LinuxDisplays&)>& use) const {
    const pid_t child = fork();
    if (child == 0) {
      const X11Connection connection;
      LinuxDisplays displays(connection.get(), rampFile());
      use(displays);
      raise(SIGKILL);
    }
    int status = 0;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
  }

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

TEST_F(DisplayGammaTest, DimsTheUsersOwnRampAndGivesItBack) {
  // A server that has just started says that all is black, and shows everything.
  const auto identity = DesktopRamps::linear(1, 1, 1);
  const auto warm = DesktopRamps::linear(1, 0.8, 0.5);
  for (const auto* own : {&identity, &warm}) {
    if (own != &identity) userSets(*own);
    LinuxDisplays displays(connection().get(), rampFile());
    ASSERT_EQ(displays.onlineDisplays(), (std::vector{Display{id(), false}}));
    for (const double maximum : {0.15, 0.575, 0.9, 0.15}) {
      EXPECT_TRUE(displays.setTransferMaximum(id(), maximum));
      auto expected = *own;
      for (auto& channel : expected) {
        for (auto& level : channel) level = static_cast<std::uint16_t>(level * maximum + 0.5);
      }
      EXPECT_LE(DesktopRamps::distance(shown(), expected), 1) << maximum;
      EXPECT_TRUE(std::filesystem::exists(rampFile()));
    }
    EXPECT_TRUE(displays.setTransferMaximum(id(), 1));
    EXPECT_EQ(shown(), *own);
    EXPECT_FALSE(std::filesystem::exists(rampFile()));
    EXPECT_TRUE(displays.setTransferMaximum(id(), 1));
    EXPECT_FALSE(displays.setTransferMaximum(0xBAD, 0.5));
    EXPECT_FALSE(displays.setTransferMaximum(0xBAD, 1));
    // The second round ends dimmed.
    EXPECT_TRUE(displays.setTransferMaximum(id(), 0.2));
  }
  EXPECT_EQ(shown(), warm);
  EXPECT_FALSE(std::filesystem::exists(rampFile()));
}

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

TEST_F(DisplayGammaTest, TheNextStartGivesBackWhatAKilledOneHasLeftDimmed) {
  const auto warm = DesktopRamps::linear(1, 0.8, 0.5);
  userSets(warm);
  const auto killDimmed = [&] {
    inKilledProcess([display = id()](LinuxDisplays& displays) {
      displays.setTransferMaximum(display, 0.6);
      displays.setTransferMaximum(display, 0.15);
    });
    EXPECT_LE(DesktopRamps::distance(shown(), DesktopRamps::linear(0.15, 0.12, 0.075)), 1);
  };
  killDimmed();
  const auto start = [&] { LinuxDisplays(connection().get(), rampFile()); };
  start();
  EXPECT_EQ(shown(), warm);
  EXPECT_FALSE(std::filesystem::exists(rampFile()));

  // The user has set another one before the next start.
  killDimmed();
  userSets(DesktopRamps::linear(1, 1, 0.9));
  start();
  EXPECT_EQ(shown(), DesktopRamps::linear(1, 1, 0.9));
  EXPECT_FALSE(std::filesystem::exists(rampFile()));
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
