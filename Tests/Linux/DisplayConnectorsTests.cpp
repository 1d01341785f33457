#include <gtest/gtest.h>
#include <unistd.h>

#include "Platform/Linux/Displays/DisplayConnectors.h"
#include "Platform/Linux/Displays/LinuxDisplays.h"
#include "Tests/Linux/ConnectorTree.h"

namespace zephyx {
namespace {

using Buses = std::vector<int>;

TEST(DisplayConnectorsTest, OnlyConnectedExternalDisplaysHaveABus) {
  const ConnectorTree tree;
  EXPECT_EQ(externalDisplayBuses(tree.root()), Buses{});
  tree.linkBus(tree.add("card0-HDMI-A-1", "connected"), 3);
  tree.linkBus(tree.add("card0-HDMI-A-2", "disconnected"), 4);
  ConnectorTree::addOwnBus(tree.add("card0-eDP-1", "connected"), 5);
  ConnectorTree::addOwnBus(tree.add("card1-DP-1", "disconnected"), 6);
  tree.linkBus(tree.add("card1-LVDS-1", "connected"), 7);
  tree.linkBus(tree.add("card1-DSI-1", "connected"), 8);
  tree.linkBus(tree.add("card1-DP-2", ""), 9);
  tree.add("card1-Virtual-1", "connected");
  tree.linkBus(tree.add("card0-Writeback-1", "unknown"), 10);
  // The cards themselves and what they render with.
  ConnectorTree::addOwnBus(tree.add("card0", "connected"), 20);
  ConnectorTree::addOwnBus(tree.add("renderD128", "connected"), 21);
  EXPECT_EQ(externalDisplayBuses(tree.root()), Buses{3});
}

TEST(DisplayConnectorsTest, ADisplayPortIsReachedOverItsOwnBusAlsoBehindAHub) {
  const ConnectorTree tree;
  const auto dual = tree.add("card0-DP-1", "connected");
  tree.linkBus(dual, 2);
  ConnectorTree::addOwnBus(dual, 11);
  // A hub is not connected itself; its two displays are.
  ConnectorTree::addOwnBus(tree.add("card0-DP-2", "disconnected"), 12);
  ConnectorTree::addOwnBus(tree.add("card0-DP-4", "connected"), 14);
  tree.linkBus(tree.add("card0-DP-5", "connected"), 13);
  // The same display on a second card's connector.
  tree.linkBus(tree.add("card1-HDMI-A-1", "connected"), 13);
  EXPECT_EQ(externalDisplayBuses(tree.root()), (Buses{11, 13, 14}));
}

TEST(DisplayConnectorsTest, SaysWhatKeepsTheUserFromADisplaysWire) {
  const ConnectorTree tree;
  const auto devices = tree.root() / "dev";
  const auto device = devices / "i2c-3";
  LinuxDisplays displays(nullptr, "", {tree.root(), devices});
  EXPECT_EQ(displays.channelObstacle(), std::nullopt) << "no display";
  tree.linkBus(tree.add("card0-HDMI-A-1", "connected"), 3);
  EXPECT_EQ(displays.channelObstacle(),
            "There is no " + device.string() + ": load the kernel module i2c-dev.");
  std::filesystem::create_directories(devices);
  std::ofstream{device};
  EXPECT_EQ(displays.channelObstacle(), std::nullopt);
  std::filesystem::permissions(device, std::filesystem::perms::owner_read);
  if (access(device.c_str(), W_OK) == 0) return;  // the superuser may do anything
  EXPECT_EQ(displays.channelObstacle(),
            "You may not write to " + device.string() + ": join the group i2c and log in again.");
}

}  // namespace
}  // namespace zephyx
