#pragma once

#include "Runner/AgentRegistry.h"
#include "Runner/AgentRowView.h"

namespace zephyx {

/// The row of an agent whose usage cannot be obtained yet.
class AgentPlaceholderRow final : public AgentRowView {
 public:
  explicit AgentPlaceholderRow(const AgentRegistry::Agent& agent);

  /// A click does nothing that the row could promise.
  void mouseEntered() override {}

  const AgentRegistry::Agent& agent() const { return agent_; }

 private:
  AgentRegistry::Agent agent_;
};

}  // namespace zephyx
