#pragma once

#include <filesystem>
#include <string_view>
#include <vector>

namespace zephyx {

/// Whether a connector of this name, as the kernel and the X server have them, leads to a panel in
/// the computer's own case.
bool isBuiltinConnector(std::string_view name);

/// The numbers of the I²C buses of the external displays that are connected, each once. `sysfs` is
/// where the kernel shows its devices.
std::vector<int> externalDisplayBuses(const std::filesystem::path& sysfs);

}  // namespace zephyx
