#include "Runner/TelemetryRelay.h"

#include <utility>

#include "Platform/Dispatch.h"
#include "Platform/Platform.h"
#include "Runner/SharedObjects.h"

namespace zephyx {
namespace {
constexpr const char* telemetryEvent = "telemetryEvent";
}

TelemetryRelay& TelemetryRelay::shared() {
  return SharedObjects::current().get<TelemetryRelay>();
}

TelemetryRelay::TelemetryRelay(Platform& platform) : dispatch_(platform.dispatch()) {}

void TelemetryRelay::track(std::string name, std::map<std::string, std::string> props) {
  dispatch_.mainQueue().async(
      lifetime_.wrap([this, name = std::move(name), props = std::move(props)] {
        const auto channel = notesChannel.lock();
        if (!channel) return;
        Map properties;
        for (const auto& [key, value] : props) properties.append(key, value);
        channel->invokeMethod(telemetryEvent, Map{{"name", name}, {"props", properties}});
      }));
}

}  // namespace zephyx
