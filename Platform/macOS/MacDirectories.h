#pragma once

#include <optional>
#include <string>

#include "Platform/Directories.h"

namespace zephyx {

class MacDirectories final : public Directories {
 public:
  std::optional<std::string> applicationSupport() const override;
  std::string home() const override;
};

}  // namespace zephyx
