#pragma once

#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include "Platform/Directories.h"

namespace zephyx {

/// A home folder of its own on the real file system, removed with this object.
class SimulatedDirectories final : public Directories {
 public:
  SimulatedDirectories() {
    home_ = (std::filesystem::temp_directory_path() / "simulated-home-XXXXXX").string();
    if (!mkdtemp(home_.data())) throw std::runtime_error("no temporary folder");
  }
  SimulatedDirectories(const SimulatedDirectories&) = delete;
  SimulatedDirectories& operator=(const SimulatedDirectories&) = delete;
  ~SimulatedDirectories() override {
    std::error_code ignored;
    std::filesystem::remove_all(home_, ignored);
  }

  std::optional<std::string> applicationSupport() const override {
    return home_ + "/Library/Application Support";
  }
  std::string home() const override { return home_; }

 private:
  std::string home_;
};

}  // namespace zephyx
