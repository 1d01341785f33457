#include "Runner/UpdaterService.h"

#include <memory>
#include <utility>

#include "Channel/MethodChannel.h"
#include "Platform/Application.h"
#include "Platform/Dispatch.h"
#include "Platform/Platform.h"
#include "Runner/AppDelegate.h"
#include "Runner/ClipboardPanelController.h"
#include "Runner/SharedObjects.h"
#include "Runner/TranslationRelay.h"

namespace zephyx {
namespace {
constexpr const char* updateAvailable = "updateAvailable";
}

UpdaterService& UpdaterService::shared() {
  return SharedObjects::current().get<UpdaterService>();
}

UpdaterService::UpdaterService(Platform& platform)
    : application_(platform.application()),
      dispatch_(platform.dispatch()),
      softwareUpdate_(platform.softwareUpdate()),
      checks_(softwareUpdate_.start(*this)) {}

void UpdaterService::checkForUpdates() {
  dispatch_.mainQueue().async(lifetime_.wrap([this] { softwareUpdate_.checkForUpdates(); }));
}

bool UpdaterService::shouldHandleShowingScheduledUpdate(const std::string&, bool inImmediateFocus) {
  return inImmediateFocus;
}

void UpdaterService::willHandleShowingUpdate(bool, const std::string& version, const UpdateState&) {
  broadcast(version);
}

void UpdaterService::didReceiveUserAttention(const std::string&) {
  broadcast(std::nullopt);
}

void UpdaterService::broadcast(std::optional<std::string> version) {
  availableVersion_ = std::move(version);
  const Map message{{"version", availableVersion_ ? Value(*availableVersion_) : Value()}};
  const auto* delegate = dynamic_cast<AppDelegate*>(application_.delegate());
  for (const auto& channel : {delegate ? delegate->methodChannel.lock() : nullptr,
                              TranslationRelay::shared().panelChannel.lock(),
                              ClipboardPanelController::shared().methodChannel()}) {
    if (channel) channel->invokeMethod(updateAvailable, message);
  }
}

}  // namespace zephyx
