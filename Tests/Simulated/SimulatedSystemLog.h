#pragma once

#include <string>
#include <utility>
#include <vector>

#include "Platform/SystemLog.h"

namespace zephyx {

class SimulatedSystemLog final : public SystemLog {
 public:
  void log(std::string_view line) override { lines_.emplace_back(line); }

  /// The lines since the last call.
  std::vector<std::string> take() { return std::exchange(lines_, {}); }

 private:
  std::vector<std::string> lines_;
};

}  // namespace zephyx
