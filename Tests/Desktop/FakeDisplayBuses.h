#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "Tests/Desktop/ChildProcess.h"
#include "Tests/Desktop/TemporaryDirectory.h"

namespace zephyx {

/// I²C buses with a display on each, as device files that behave as the kernel's.
class FakeDisplayBuses {
 public:
  /// What becomes of writes, by the bus's number.
  enum Bus { obeying = 1, failing = 2, hanging = 3, vanishing = 4 };

  struct Write {
    int bus = 0;
    std::string bytes;  ///< chip address and bytes, as in "37: 51 84"
  };

  /// Why there are none on this machine; empty when there are.
  static std::string missing();

  /// Throws std::runtime_error when they do not appear.
  FakeDisplayBuses();
  FakeDisplayBuses(const FakeDisplayBuses&) = delete;
  FakeDisplayBuses& operator=(const FakeDisplayBuses&) = delete;
  ~FakeDisplayBuses();

  /// Where "dev" would be.
  const std::filesystem::path& folder() const { return folder_; }
  std::string path(Bus bus) const { return folder_ / ("i2c-" + std::to_string(bus)); }
  /// To one bus, oldest first.
  std::vector<Write> writes(Bus bus) const;

 private:
  TemporaryDirectory directory_;
  std::filesystem::path folder_ = directory_.path() / "dev";
  std::filesystem::path log_ = directory_.path() / "log";
  ChildProcess process_;
};

}  // namespace zephyx
