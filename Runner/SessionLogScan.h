#pragma once

#include <filesystem>
#include <vector>

#include "Runner/ModelUsage.h"
#include "Runner/SessionLogReader.h"

namespace zephyx {

struct SessionLogScanOptions {
  unsigned threads = 2;  ///< at most; another one only where there is enough to read
  SessionLogBuffer buffer;
};

/// The tokens that each model used since a time (in seconds since 1970), by the session logs in a
/// folder and those below it; the model with the most comes first. What is not there or cannot be
/// read adds nothing. Takes as long as the disk does: for a queue of its own.
std::vector<ModelUsage> localModelBreakdown(const std::filesystem::path& root, double since,
                                            const SessionLogScanOptions& options = {});

}  // namespace zephyx
