#include "Tests/Simulated/SimulatedDirectories.h"

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace zephyx {

SimulatedDirectories::SimulatedDirectories() {
  home_ = (std::filesystem::temp_directory_path() / "simulated-home-XXXXXX").string();
  if (!mkdtemp(home_.data())) throw std::runtime_error("no temporary folder");
}

SimulatedDirectories::~SimulatedDirectories() {
  std::error_code ignored;
  std::filesystem::remove_all(home_, ignored);
}

std::optional<std::string> SimulatedDirectories::applicationSupport() const {
  if (!namesApplicationSupport_) return std::nullopt;
  return home_ + "/Library/Application Support";
}

}  // namespace zephyx
