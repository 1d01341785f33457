#include "Runner/AgentVisibilityChannelHandlers.h"

#include <algorithm>
#include <utility>

#include "Runner/AgentRegistry.h"
#include "Runner/AgentVisibility.h"
#include "Runner/Arguments.h"

namespace zephyx {
namespace {

constexpr const char* invalidArguments = "invalid";

namespace method {
constexpr const char* get = "agentsVisibilityGet";
constexpr const char* set = "agentVisibilitySet";
}  // namespace method

bool isKnown(const std::string& id) {
  const auto& agents = AgentRegistry::agents;
  return std::any_of(agents.begin(), agents.end(), [&](const auto& each) { return each.id == id; });
}

}  // namespace

bool AgentVisibilityChannelHandlers::handle(const MethodCall& call, MethodResult& result) {
  if (call.method == method::get) {
    get(std::move(result));
  } else if (call.method == method::set) {
    set(call.arguments, std::move(result));
  } else {
    return false;
  }
  return true;
}

void AgentVisibilityChannelHandlers::get(MethodResult result) {
  List agents;
  for (const auto& agent : AgentRegistry::agents) {
    agents.push_back(Map{{"id", std::string(agent.id)},
                         {"name", std::string(agent.name)},
                         {"visible", isAgentVisible(userDefaults_, agent.id)}});
  }
  result.success(std::move(agents));
}

void AgentVisibilityChannelHandlers::set(const Value& arguments, MethodResult result) {
  const auto* id = stringArgument(arguments, "id");
  const auto visible = boolArgument(arguments, "visible");
  if (!id || !isKnown(*id) || !visible) {
    result.error(invalidArguments,
                 "agentVisibilitySet requiere un id de agente válido y visible booleano");
    return;
  }
  setAgentVisible(userDefaults_, *id, *visible);
  result.success(Map{{"id", *id}, {"visible", *visible}});
}

}  // namespace zephyx
