#include "Screens/UpdateNotice.h"

#include <utility>

namespace zephyx {
namespace {

constexpr auto updateAvailableMethod = "updateAvailable";  // from the host
constexpr auto updateStateMethod = "updateState";
constexpr auto updateCheckMethod = "updateCheck";

}  // namespace

UpdateNotice::UpdateNotice(MethodChannel& channel) : channel_(channel) {
  channel_.invokeMethod(updateStateMethod, {}, guard_.wrap([this](const MethodReply& reply) {
    if (const auto* version = std::get_if<Value>(&reply)) setVersion(version);
  }));
}

void UpdateNotice::open() {
  channel_.invokeMethod(updateCheckMethod);
}

bool UpdateNotice::handle(const MethodCall& call) {
  if (call.method != updateAvailableMethod) return false;
  const Map* map = call.arguments.asMap();
  setVersion(map ? map->find("version") : nullptr);
  return true;
}

void UpdateNotice::setVersion(const Value* version) {
  const auto* text = version ? version->asString() : nullptr;
  auto next = text ? QString::fromStdString(*text) : QString();
  if (std::exchange(version_, std::move(next)) != version_) emit versionChanged();
}

}  // namespace zephyx
