#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

#include "Tests/Desktop/VirtualDesktop.h"

namespace zephyx {

/// What a process holds at one moment, in the words of the kernel, the X server and the bus.
struct ProcessFigures {
  struct Figure {
    std::string name;
    double value = 0;
    double tolerance = 0;  ///< how much more than before is no growth
  };
  std::vector<Figure> figures;

  /// `folder` is where it keeps its files. Its processor time is that of one quiet second.
  static ProcessFigures of(const VirtualDesktop& desktop, pid_t pid,
                           const std::filesystem::path& folder);
  /// Whether nothing is higher than it was, but for the tolerances.
  bool hasGrownSince(const ProcessFigures& before) const;
};

}  // namespace zephyx
