#include "Tests/Runner/HostTest.h"

namespace zephyx {
namespace {

class AgentVisibilityTest : public HostTest {
 protected:
  static Value listed(bool claude, bool gemini, bool openai) {
    return List{Map{{"id", "claude-code"}, {"name", "Claude Code"}, {"visible", claude}},
                Map{{"id", "gemini"}, {"name", "Gemini CLI"}, {"visible", gemini}},
                Map{{"id", "openai"}, {"name", "OpenAI Codex"}, {"visible", openai}}};
  }
  MethodReply call(const char* method, const Value& arguments = {}) {
    return mainScreen().call(method, arguments).value();
  }
};

TEST_F(AgentVisibilityTest, ListsTheAgentsAndStoresWhichAreShown) {
  launch();
  EXPECT_EQ(call("agentsVisibilityGet"), MethodReply(listed(true, true, true)));
  const Map hidden{{"id", "gemini"}, {"visible", false}};
  EXPECT_EQ(call("agentVisibilitySet", hidden), MethodReply(Value(hidden)));
  EXPECT_EQ(desktop.userDefaults.boolean("agentUsage.visible.gemini"), false);
  desktop.userDefaults.setString("agentUsage.visible.openai", "false");
  EXPECT_EQ(call("agentsVisibilityGet"), MethodReply(listed(true, false, true)));
}

TEST_F(AgentVisibilityTest, RefusesWhatIsNoAgentOrNoBoolean) {
  launch();
  const std::vector<Value> wrong = {
      Value(),
      "gemini",
      Map{{"id", "cursor"}, {"visible", true}},
      Map{{"id", "Gemini"}, {"visible", false}},
      Map{{"id", 1}, {"visible", false}},
      Map{{"visible", false}},
      Map{{"id", "gemini"}},
      Map{{"id", "gemini"}, {"visible", "true"}},
      Map{{"id", "gemini"}, {"visible", 0}},
  };
  for (const auto& arguments : wrong) {
    EXPECT_EQ(
        call("agentVisibilitySet", arguments),
        MethodReply(MethodError{
            "invalid", "agentVisibilitySet requiere un id de agente válido y visible booleano",
            Value()}));
  }
  EXPECT_TRUE(desktop.userDefaults.store()->empty());
}

}  // namespace
}  // namespace zephyx
