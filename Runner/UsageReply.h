#pragma once

#include <optional>

#include "Platform/BinaryMessenger.h"
#include "Runner/AgentUsage.h"

namespace zephyx {

/// Reads the usage service's reply: all of an `AgentUsage` but the models. Nothing without a figure
/// for the session; what else is missing or malformed is left out. Any thread.
std::optional<AgentUsage> parseUsageResponse(BytesView body);

}  // namespace zephyx
