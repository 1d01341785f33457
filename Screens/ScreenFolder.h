#pragma once

#include <string>
#include <string_view>

namespace zephyx {

class Directories;

/// Of the one channel that each screen has to the host.
inline constexpr auto screenChannelName = "com.zephyx.app/menu";

/// The program's own folder, where the host keeps its files too.
std::string screenFolder(const Directories& directories);

/// One line to the log, from a screen.
void reportToLog(std::string_view line);

}  // namespace zephyx
