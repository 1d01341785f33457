#include "Runner/InputLockController.h"

#include <cassert>
#include <utility>

#include "Platform/Accessibility.h"
#include "Platform/Alert.h"
#include "Platform/Dispatch.h"
#include "Platform/Label.h"
#include "Platform/Platform.h"
#include "Platform/TextMetrics.h"
#include "Platform/Workspace.h"
#include "Runner/HeadsUpPanel.h"
#include "Runner/HotkeyManager.h"

namespace zephyx {
namespace {

constexpr double attemptInterval = 0.05;
constexpr int maximumAttempts = 40;  // two seconds

constexpr std::uint64_t comparedFlags =
    eventModifier::shift | eventModifier::control | eventModifier::option | eventModifier::command;

constexpr double hudCornerRadius = 12;
constexpr Size hudMargins{40, 24};  // left and right, above and below together

constexpr const char* permissionMessage = "Accessibility permission needed";
constexpr const char* permissionText =
    "To lock the keyboard or trackpad for cleaning, enable Zephyx under System Settings → Privacy "
    "& Security → Accessibility, then try again.\n\nIf Zephyx is already listed, remove it with "
    "the “–” button and add it again — debug builds lose this permission on each rebuild.";
constexpr const char* accessibilitySettings =
    "x-apple.systempreferences:com.apple.preference.security?Privacy_Accessibility";

constexpr const char* failureMessage = "Could not lock input";
constexpr const char* failureText =
    "Zephyx needs Accessibility permission to block input events. Enable it in System Settings → "
    "Privacy & Security → Accessibility and try again.";
constexpr const char* busyText =
    "Another program has the keyboard or the mouse for itself. Close its menu or dialog and try "
    "again.";

constexpr std::uint64_t maskOf(std::initializer_list<EventType> types) {
  std::uint64_t mask = 0;
  for (const auto type : types) mask |= zephyx::eventMask(type);
  return mask;
}

std::shared_ptr<View> makeNotice(const TextMetrics& metrics, const std::string& text) {
  const Font font{13, FontWeight::semibold};
  const auto size = metrics.size(text, font);
  auto label = std::make_shared<Label>(text, TextStyle{font, color::white, TextAlignment::center});
  label->setFrame({{hudMargins.width / 2, hudMargins.height / 2}, size});
  auto notice = std::make_shared<View>(
      Rect{{0, 0}, {size.width + hudMargins.width, size.height + hudMargins.height}});
  notice->addChild(label);
  return notice;
}

}  // namespace

InputLockController::InputLockController(Platform& platform) : platform_(platform) {}

InputLockController::~InputLockController() = default;

std::uint64_t InputLockController::eventMask(InputLockTarget target) {
  using enum EventType;
  return target == InputLockTarget::keyboard
             ? maskOf({keyDown, keyUp, flagsChanged, systemDefined})
             : maskOf({mouseMoved, leftMouseDown, leftMouseUp, leftMouseDragged, rightMouseDown,
                       rightMouseUp, rightMouseDragged, otherMouseDown, otherMouseUp,
                       otherMouseDragged, scrollWheel});
}

const HotkeyConfig& InputLockController::hotkeyConfig(InputLockTarget target) const {
  return HotkeyManager::shared().config(
      target == InputLockTarget::keyboard ? HotkeyID::keyboardLock : HotkeyID::trackpadLock);
}

std::string InputLockController::shortcutDisplay(InputLockTarget target) const {
  return HotkeyManager::shared().displayString(hotkeyConfig(target));
}

void InputLockController::lock(InputLockTarget target) {
  assert(!activeLock_);
  if (nextAttempt_) return unlock();
  if (!ensureAccessibilityPermission()) return stateChanged();
  install(target, maximumAttempts);
}

void InputLockController::install(InputLockTarget target, int attempts) {
  auto [tap, isBusy] = platform_.eventTaps().createEventTap(
      eventMask(target), {.event = [this](const Event& event) { handle(event); },
                          .invalidated = [this] { unlockSoon(); }});
  if (!tap && isBusy && attempts > 0) {
    return tryLater([this, target, attempts] { install(target, attempts - 1); });
  }
  if (!tap) {
    return platform_.alerts().show({failureMessage, isBusy ? busyText : failureText, {"OK"}},
                                   [](std::size_t) {});
  }
  if (target == InputLockTarget::keyboard) {
    const auto& config = hotkeyConfig(target);
    keyboardUnlockKeyCode_ = config.keyCode;
    keyboardUnlockFlags_ = eventModifiers(config.modifiers);
  }
  eventTap_ = std::move(tap);
  activeLock_ = target;
  showHUD(target);
  stateChanged();
}

void InputLockController::unlock() {
  const bool isWaiting = static_cast<bool>(nextAttempt_);
  if (!activeLock_ && !isWaiting) return;
  nextAttempt_.reset();
  eventTap_.reset();
  activeLock_.reset();
  keyboardUnlockKeyCode_ = -1;
  keyboardUnlockFlags_ = 0;
  hudPanel_.reset();
  stateChanged();
}

void InputLockController::unlockSoon() {
  platform_.dispatch().mainQueue().async(lifetime_.wrap([this] { unlock(); }));
}

void InputLockController::handle(const Event& event) {
  switch (event.type) {
    case EventType::tapDisabledByTimeout:
    case EventType::tapDisabledByUserInput:
      return enableAgain(maximumAttempts);
    case EventType::keyDown:
      if (isUnlockCombination(event)) unlockSoon();
      break;
    default:
      break;
  }
}

bool InputLockController::isUnlockCombination(const Event& event) const {
  // The hotkey that locked may still be down.
  return activeLock_ == InputLockTarget::keyboard && keyboardUnlockKeyCode_ >= 0 &&
         !event.isRepeat && event.keyCode == keyboardUnlockKeyCode_ &&
         (event.modifierFlags & comparedFlags) == (keyboardUnlockFlags_ & comparedFlags);
}

void InputLockController::enableAgain(int attempts) {
  if (eventTap_->enable()) return;
  // A panel that speaks of a lock which is none would be worse than no lock.
  if (attempts == 0) return unlockSoon();
  tryLater([this, attempts] { enableAgain(attempts - 1); });
}

void InputLockController::tryLater(std::function<void()> attempt) {
  nextAttempt_ = scheduleOnce(platform_.dispatch().mainQueue(), attemptInterval,
                              [this, attempt = std::move(attempt)] {
                                nextAttempt_.reset();
                                attempt();
                              });
}

bool InputLockController::ensureAccessibilityPermission() {
  if (platform_.accessibility().isProcessTrustedWithPrompt()) return true;
  if (const auto obstacle = platform_.accessibility().obstacle()) {
    platform_.alerts().show({failureMessage, *obstacle, {"OK"}}, [](std::size_t) {});
    return false;
  }
  platform_.alerts().show({permissionMessage, permissionText, {"Open System Settings", "Cancel"}},
                          [&workspace = platform_.workspace()](std::size_t button) {
                            if (button == 0) workspace.openUrl(accessibilitySettings);
                          });
  return false;
}

void InputLockController::showHUD(InputLockTarget target) {
  const auto shortcut = shortcutDisplay(target);
  const auto text = target == InputLockTarget::keyboard
                        ? "Keyboard locked for cleaning — press " + shortcut +
                              " or click the Zephyx menu bar icon to unlock"
                        : "Trackpad locked for cleaning — press " + shortcut + " to unlock";
  hudPanel_ = std::make_unique<HeadsUpPanel>(platform_, makeNotice(platform_.textMetrics(), text),
                                             hudCornerRadius);
  hudPanel_->fadeIn();
}

void InputLockController::stateChanged() const {
  if (onStateChange) onStateChange();
}

}  // namespace zephyx
