#include "Platform/Linux/Displays/DisplayConnectors.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <optional>
#include <set>
#include <string>
#include <system_error>

namespace zephyx {
namespace {

namespace fs = std::filesystem;

std::optional<int> numberAfter(std::string_view prefix, std::string_view name) {
  if (!name.starts_with(prefix)) return std::nullopt;
  name.remove_prefix(prefix.size());
  int number = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
  if (error != std::errc() || end != name.data() + name.size()) return std::nullopt;
  return number;
}

/// "card0-HDMI-A-1" is the connector HDMI-A-1; the cards themselves and their render nodes are
/// none.
std::string_view connectorName(std::string_view entry) {
  const auto dash = entry.find('-');
  if (dash == std::string_view::npos || !numberAfter("card", entry.substr(0, dash))) return {};
  return entry.substr(dash + 1);
}

bool isConnected(const fs::path& connector) {
  std::string status;
  std::ifstream(connector / "status") >> status;
  return status == "connected";
}

std::optional<int> busOf(const fs::path& connector) {
  std::error_code error;
  // A DisplayPort's own bus lies beneath it; its `ddc` may be that of an adapter plug for HDMI.
  for (const auto& entry : fs::directory_iterator(connector, error)) {
    if (const auto bus = numberAfter("i2c-", entry.path().filename().string())) return bus;
  }
  return numberAfter("i2c-", fs::read_symlink(connector / "ddc", error).filename().string());
}

}  // namespace

bool isBuiltinConnector(std::string_view name) {
  constexpr std::string_view kinds[] = {"eDP", "LVDS", "DSI", "DPI"};
  return std::any_of(std::begin(kinds), std::end(kinds),
                     [&](std::string_view kind) { return name.starts_with(kind); });
}

std::vector<int> externalDisplayBuses(const fs::path& sysfs) {
  std::set<int> buses;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator(sysfs / "class/drm", error)) {
    const auto file = entry.path().filename().string();
    const auto name = connectorName(file);
    if (name.empty() || isBuiltinConnector(name) || !isConnected(entry.path())) continue;
    if (const auto bus = busOf(entry.path())) buses.insert(*bus);
  }
  return {buses.begin(), buses.end()};
}

}  // namespace zephyx
