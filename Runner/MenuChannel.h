#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "Channel/MethodChannel.h"
#include "Platform/SystemLog.h"

namespace zephyx {

/// The name of each engine's method channel with the host.
inline constexpr const char* menuChannelName = "com.zephyx.app/menu";

/// Code of the error that answers wrong arguments.
inline constexpr const char* badArguments = "BAD_ARGS";

/// The channel of one engine. `log` outlives it.
inline std::shared_ptr<MethodChannel> makeMenuChannel(
    const std::shared_ptr<BinaryMessenger>& messenger, SystemLog& log) {
  return std::make_shared<MethodChannel>(
      messenger, menuChannelName, [&log](std::string_view line) { log.log(std::string(line)); });
}

}  // namespace zephyx
