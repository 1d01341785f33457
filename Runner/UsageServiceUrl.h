#pragma once

#include <optional>
#include <string>

namespace zephyx {

/// Where the usage service answers: at the host that the program was built for or at `setting`, a
/// host with or without a port. Always by HTTPS; a setting that begins with "http://" is heeded for
/// this computer only. Nothing when the setting is no such host.
std::optional<std::string> usageServiceUrl(const std::optional<std::string>& setting);

}  // namespace zephyx
