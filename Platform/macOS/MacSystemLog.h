#pragma once

#include <string_view>

#include "Platform/SystemLog.h"

namespace zephyx {

/// The unified log, at the default level, and standard error for whoever starts the program in a
/// terminal. The log keeps about the first thousand bytes of a line.
class MacSystemLog final : public SystemLog {
 public:
  void log(std::string_view line) override;
};

}  // namespace zephyx
