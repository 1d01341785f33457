#pragma once

#include "Platform/SystemLog.h"

namespace zephyx {

/// Lines on standard error: local time, process, text.
class LinuxSystemLog final : public SystemLog {
 public:
  void log(std::string_view line) override;
};

}  // namespace zephyx
