#pragma once

#include <string_view>

namespace zephyx {

/// The system's log, one line per call. Any thread. Never give it tokens or clipboard contents.
class SystemLog {
 public:
  virtual ~SystemLog() = default;
  virtual void log(std::string_view line) = 0;
};

}  // namespace zephyx
