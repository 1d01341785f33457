#include "Runner/MicrophoneMuteController.h"

#include <algorithm>
#include <string>

#include "Platform/Dispatch.h"
#include "Platform/Label.h"
#include "Platform/Platform.h"
#include "Platform/SymbolImage.h"
#include "Platform/SystemLog.h"
#include "Platform/TextMetrics.h"
#include "Runner/HeadsUpPanel.h"
#include "Runner/SharedObjects.h"

namespace zephyx {
namespace {

/// An input volume up to this is silence.
constexpr float silence = 0.0001F;
constexpr double hudSeconds = 1.2;
constexpr double hudHeight = 120;
constexpr double hudMargin = 32;
constexpr double noticeCornerRadius = 18;

std::shared_ptr<View> makeNotice(const TextMetrics& metrics, bool muted) {
  const std::string text = muted ? "Microphone muted" : "Microphone on";
  const Font font{13, FontWeight::semibold};
  const auto textSize = metrics.size(text, font);
  const double width = std::max(hudHeight, textSize.width + 2 * hudMargin);

  auto symbol = std::make_shared<SymbolImage>(
      SystemSymbol{muted ? "mic.slash.fill" : "mic.fill", 26, FontWeight::semibold,
                   muted ? color::systemRed : color::white});
  symbol->setFrame({{width / 2 - 20, 46}, {40, 40}});
  auto label = std::make_shared<Label>(text, TextStyle{font, color::white, TextAlignment::center});
  label->setFrame({{0, 24}, {width, textSize.height}});

  auto notice = std::make_shared<View>(Rect{{0, 0}, {width, hudHeight}});
  notice->addChild(symbol);
  notice->addChild(label);
  return notice;
}

}  // namespace

MicrophoneMuteController& MicrophoneMuteController::shared() {
  return SharedObjects::current().get<MicrophoneMuteController>();
}

MicrophoneMuteController::MicrophoneMuteController(Platform& platform)
    : platform_(platform), audio_(platform.audioHardware()) {}

MicrophoneMuteController::~MicrophoneMuteController() = default;

bool MicrophoneMuteController::isMuted() const {
  const auto device = audio_.defaultInputDevice();
  if (!device) return false;
  if (const auto muted = audio_.mute(*device)) return *muted;
  const auto volume = audio_.inputVolume(*device);
  return volume && *volume <= silence;
}

void MicrophoneMuteController::setMuted(bool muted) {
  const auto device = audio_.defaultInputDevice();
  if (!device) return;
  if (audio_.hasMute(*device)) {
    writeMuteProperty(*device, muted);
  } else if (audio_.hasInputVolume(*device)) {
    writeInputVolume(*device, muted);
  }
  showHUD(muted);
  stateChanged();
}

void MicrophoneMuteController::writeMuteProperty(AudioDeviceId device, bool muted) {
  const auto status = audio_.setMute(device, muted);
  if (status == audioStatus::noErr) return;
  platform_.systemLog().log(std::string("[MicMute] setMute(") + (muted ? "true" : "false") +
                            ") falló (OSStatus=" + std::to_string(status) + ")");
}

void MicrophoneMuteController::writeInputVolume(AudioDeviceId device, bool muted) {
  if (muted) {
    savedInputVolume_ = audio_.inputVolume(device).value_or(1.0F);
    audio_.setInputVolume(device, 0.0F);
  } else {
    // Unmuting never restores silence.
    audio_.setInputVolume(device, savedInputVolume_ > silence ? savedInputVolume_ : 1.0F);
  }
}

void MicrophoneMuteController::showHUD(bool muted) {
  hudDismissItem_.reset();
  hudPanel_.reset();  // off the screen before the next one comes
  hudPanel_ = std::make_unique<HeadsUpPanel>(platform_, makeNotice(platform_.textMetrics(), muted),
                                             noticeCornerRadius);
  hudPanel_->fadeIn();
  hudDismissItem_ =
      scheduleOnce(platform_.dispatch().mainQueue(), hudSeconds, [this] { hudPanel_->fadeOut(); });
}

void MicrophoneMuteController::installDefaultDeviceListener() {
  if (deviceListener_) return;
  deviceListener_ = audio_.observeDefaultInputDevice(lifetime_.wrap([this] { stateChanged(); }));
}

void MicrophoneMuteController::stateChanged() const {
  if (onStateChange) onStateChange();
}

}  // namespace zephyx
