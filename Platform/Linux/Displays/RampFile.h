#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "Platform/Linux/Displays/GammaRamp.h"

namespace zephyx {

/// The user's own ramps of the displays that are dimmed, by display, for the next start to give
/// them back when this one cannot. The file is there while one is dimmed.
class RampFile {
 public:
  using Ramps = std::map<std::uint32_t, GammaRamp>;

  /// An empty path keeps nothing.
  explicit RampFile(std::string path);

  /// Empty when there is no file or it is damaged.
  Ramps read() const;
  /// Empty ramps remove the file.
  void write(const Ramps& ramps) const;

 private:
  const std::string path_;
};

}  // namespace zephyx
