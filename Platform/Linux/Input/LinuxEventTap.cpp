#include "Platform/Linux/Input/LinuxEventTap.h"

#include <chrono>
#include <optional>
#include <utility>

#include "Platform/Linux/Input/KeyCodes.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

constexpr auto checkInterval = 50ms;

std::uint64_t modifierFlags(std::uint16_t state) {
  std::uint64_t flags = 0;
  if (state & XCB_MOD_MASK_SHIFT) flags |= eventModifier::shift;
  if (state & XCB_MOD_MASK_CONTROL) flags |= eventModifier::control;
  if (state & XCB_MOD_MASK_1) flags |= eventModifier::option;
  if (state & XCB_MOD_MASK_4) flags |= eventModifier::command;
  return flags;
}

}  // namespace

LinuxEventTap::LinuxEventTap(Grab grab, EventTapCallbacks callbacks,
                             std::function<void(Grab)> leave)
    : grab_(std::move(grab)),
      callbacks_(std::move(callbacks)),
      leave_(std::move(leave)),
      events_([this](const xcb_generic_event_t& event) { return filter(event); }),
      pauses_([this] { end(); }) {
  timer_.setInterval(checkInterval);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { check(); });
  timer_.start();
}

LinuxEventTap::~LinuxEventTap() {
  if (isEnabled_) leave_(std::move(grab_));
}

bool LinuxEventTap::enable() {
  isEnabled_ = grab_->take() == InputGrab::Outcome::taken;
  return isEnabled_;
}

bool LinuxEventTap::filter(const xcb_generic_event_t& event) {
  // Also what an open menu gets.
  if (!isEnabled_ || !grab_->devices().keyboard) return false;
  switch (eventTypeOf(event)) {
    case XCB_KEY_PRESS:
      reportPress(reinterpret_cast<const xcb_key_press_event_t&>(event));
      return true;
    case XCB_KEY_RELEASE:
      repeat_.released(reinterpret_cast<const xcb_key_release_event_t&>(event));
      return true;
    case XCB_FOCUS_OUT:
      // A menu that closes gives back what it took over from the tap.
      if (reinterpret_cast<const xcb_focus_out_event_t&>(event).mode == XCB_NOTIFY_MODE_UNGRAB) {
        check();
      }
      return false;
    default:
      return false;
  }
}

void LinuxEventTap::reportPress(const xcb_key_press_event_t& press) {
  const auto key = macKeyCodeFromX(press.detail);
  if (!key) return;
  callbacks_.event({isModifierKeyCode(*key) ? EventType::flagsChanged : EventType::keyDown,
                    modifierFlags(press.state), *key, repeat_.isRepeat(press)});
}

void LinuxEventTap::check() {
  if (grab_->beat()) return disable(EventType::tapDisabledByTimeout);
  if (isEnabled_ && grab_->take() != InputGrab::Outcome::taken) {
    disable(EventType::tapDisabledByUserInput);
  }
}

void LinuxEventTap::disable(EventType reason) {
  isEnabled_ = false;
  callbacks_.event({.type = reason});
}

void LinuxEventTap::end() {
  isEnabled_ = false;
  timer_.stop();
  grab_->letGo();
  callbacks_.invalidated();
}

}  // namespace zephyx
