#include "Runner/UpdateChannelHandlers.h"

#include <string_view>

#include "Runner/UpdaterService.h"

namespace zephyx {
namespace {

// Views know their length: a name of another length, as of a token on its way, is refused at once.
namespace method {
constexpr std::string_view state = "updateState";
constexpr std::string_view check = "updateCheck";
}  // namespace method

}  // namespace

bool UpdateChannelHandlers::handle(const MethodCall& call, MethodResult& result) {
  if (call.method == method::state) {
    const auto& version = UpdaterService::shared().availableVersion();
    result.success(version ? Value(*version) : Value());
  } else if (call.method == method::check) {
    UpdaterService::shared().checkForUpdates();
    result.success();
  } else {
    return false;
  }
  return true;
}

}  // namespace zephyx
