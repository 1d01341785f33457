#pragma once

#include <string_view>

namespace zephyx {

class UserDefaults;

// Whether the status menu has a row for a coding agent, by the agent's id.

/// True until the user says otherwise.
bool isAgentVisible(const UserDefaults& userDefaults, std::string_view id);
void setAgentVisible(UserDefaults& userDefaults, std::string_view id, bool visible);

}  // namespace zephyx
