#pragma once

#include <vector>

#include "Runner/ModelUsage.h"

namespace zephyx {

/// What a scan of logs with these contents must find: the rules one by one, slowly. A sum that is
/// too large is thrown as std::overflow_error.
std::vector<ModelUsage> referenceBreakdown(const std::vector<std::string>& logs, double since);

}  // namespace zephyx
