#include "Runner/AgentVisibility.h"

#include <string>

#include "Platform/UserDefaults.h"

namespace zephyx {
namespace {

std::string visibilityKey(std::string_view id) {
  return "agentUsage.visible." + std::string(id);
}

}  // namespace

bool isAgentVisible(const UserDefaults& userDefaults, std::string_view id) {
  return userDefaults.boolean(visibilityKey(id)).value_or(true);
}

void setAgentVisible(UserDefaults& userDefaults, std::string_view id, bool visible) {
  userDefaults.setBoolean(visibilityKey(id), visible);
}

}  // namespace zephyx
