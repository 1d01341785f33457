#pragma once

#include "Platform/Directories.h"

namespace zephyx {

/// A home folder of its own on the real file system, removed with this object.
class SimulatedDirectories final : public Directories {
 public:
  SimulatedDirectories();
  SimulatedDirectories(const SimulatedDirectories&) = delete;
  SimulatedDirectories& operator=(const SimulatedDirectories&) = delete;
  ~SimulatedDirectories() override;

  std::optional<std::string> applicationSupport() const override;
  std::string home() const override { return home_; }

  /// The system stops naming an application-support folder.
  void forgetApplicationSupport() { namesApplicationSupport_ = false; }

 private:
  std::string home_;
  bool namesApplicationSupport_ = true;
};

}  // namespace zephyx
