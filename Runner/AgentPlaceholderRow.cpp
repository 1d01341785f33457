#include "Runner/AgentPlaceholderRow.h"

namespace zephyx {

AgentPlaceholderRow::AgentPlaceholderRow(const AgentRegistry::Agent& agent)
    : AgentRowView(std::string(agent.name)), agent_(agent) {
  setTitleColor(color::secondaryLabel);
  setSubtitle("Coming soon");
  setToolTip(std::string(agent.name) + " usage monitoring is coming in a future update");
}

}  // namespace zephyx
