#pragma once

#include <filesystem>
#include <fstream>

#include "Tests/Desktop/TemporaryDirectory.h"

namespace zephyx {

/// Graphics cards as the kernel shows them, in a folder of the test's own.
class ConnectorTree {
 public:
  /// Where "sys" would be.
  const std::filesystem::path& root() const { return root_.path(); }

  /// `name` as in "card0-HDMI-A-1"; no status at all when it is empty.
  std::filesystem::path add(const std::string& name, const std::string& status) const {
    const auto connector = drm() / name;
    std::filesystem::create_directories(connector);
    if (!status.empty()) std::ofstream(connector / "status") << status << '\n';
    return connector;
  }
  /// The bus of a DisplayPort.
  static void addOwnBus(const std::filesystem::path& connector, int bus) {
    std::filesystem::create_directories(connector / ("i2c-" + std::to_string(bus)) / "i2c-dev");
  }
  /// The bus of the graphics card that is wired to the connector.
  void linkBus(const std::filesystem::path& connector, int bus) const {
    const auto adapter = root() / "devices/gpu" / ("i2c-" + std::to_string(bus));
    std::filesystem::create_directories(adapter);
    std::filesystem::create_directory_symlink(adapter, connector / "ddc");
  }

 private:
  std::filesystem::path drm() const { return root() / "class/drm"; }

  TemporaryDirectory root_;
};

}  // namespace zephyx
