#pragma once

#include <array>
#include <string_view>

namespace zephyx {

/// The coding agents that the program knows, in the order in which they are listed.
class AgentRegistry {
 public:
  struct Agent {
    std::string_view id;  ///< key of its settings, and its name on the channels
    std::string_view name;
    bool operator==(const Agent&) const = default;
  };

  static constexpr std::array<Agent, 3> agents{
      {{"claude-code", "Claude Code"}, {"gemini", "Gemini CLI"}, {"openai", "OpenAI Codex"}}};

  AgentRegistry() = delete;
};

}  // namespace zephyx
