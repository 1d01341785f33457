#include <gtest/gtest.h>

#include "Screens/MainScreenController.h"
#include "Tests/Screens/TestWorld.h"

namespace zephyx {
namespace {

Value agent(const char* id, const char* name, bool visible) {
  return Map{{"id", id}, {"name", name}, {"visible", visible}};
}

class AgentSettingsTest : public testing::Test {
 protected:
  AgentSettingsTest() {
    world.replies["agentsVisibilityGet"] = Value(List{
        agent("claude-code", "Claude Code", true), "no payload",
        Map{{"id", "x"}, {"name", "X"}, {"visible", 1}}, agent("gemini", "Gemini CLI", false)});
    world.showPicture(900, 600);
    world.call("openSettings");
    EXPECT_TRUE(waitFor([&] { return agents()->rowCount() == 2; }));
    world.settlePicture();
  }
  AgentSettings* agents() { return world.controller<MainScreenController>()->agents(); }
  QVariant data(int row, AgentSettings::Role role) { return agents()->index(row).data(role); }
  /// Goes through the page with Tab until the switch of an agent has the keyboard.
  bool tabTo(const QString& name) {
    for (int presses = 0; presses < 80; ++presses) {
      const auto* item = world.window()->activeFocusItem();
      if (item && item->property("label") == "Show " + name + " in the menu") return true;
      world.press(Qt::Key_Tab);
    }
    return false;
  }

  TestWorld world{"main"};
};

TEST_F(AgentSettingsTest, TheKeyboardShowsAndHidesAnAgentThroughTheHost) {
  EXPECT_EQ(data(0, AgentSettings::nameRole), "Claude Code");
  EXPECT_TRUE(data(0, AgentSettings::shownRole).toBool());
  EXPECT_FALSE(data(1, AgentSettings::shownRole).toBool());
  world.replies["agentVisibilitySet"] = Value(Map{{"id", "gemini"}, {"visible", true}});
  ASSERT_TRUE(tabTo("Gemini CLI"));
  world.press(Qt::Key_Space);
  ASSERT_TRUE(world.waitForCall("agentVisibilitySet"));
  EXPECT_EQ(world.callsOf("agentVisibilitySet").back().arguments,
            Value(Map{{"id", "gemini"}, {"visible", true}}));
  EXPECT_TRUE(data(1, AgentSettings::shownRole).toBool());
  EXPECT_TRUE(world.window()->activeFocusItem()->property("checked").toBool());
  world.press(Qt::Key_Return);
  ASSERT_TRUE(world.waitForCall("agentVisibilitySet", 2));
  EXPECT_FALSE(data(1, AgentSettings::shownRole).toBool());
}

TEST_F(AgentSettingsTest, WhatTheHostRefusesGoesBackWithItsWords) {
  world.replies["agentVisibilitySet"] = MethodError{"invalid", "no es un agente", {}};
  agents()->setShown(0, false);
  ASSERT_TRUE(waitFor([&] { return data(0, AgentSettings::problemRole) == "no es un agente"; }));
  EXPECT_TRUE(data(0, AgentSettings::shownRole).toBool());
  agents()->setShown(7, false);
  agents()->setShown(-1, false);
  world.replies["agentVisibilitySet"] = Value(Map{{"id", "claude-code"}, {"visible", false}});
  agents()->setShown(0, false);
  EXPECT_EQ(data(0, AgentSettings::problemRole), "");
  ASSERT_TRUE(world.waitForCall("agentVisibilitySet", 2));
  EXPECT_FALSE(data(0, AgentSettings::shownRole).toBool());
}

}  // namespace
}  // namespace zephyx
