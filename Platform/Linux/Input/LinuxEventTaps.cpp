#include "Platform/Linux/Input/LinuxEventTaps.h"

#include <chrono>
#include <utility>

#include "Platform/Linux/Input/HeldKeys.h"
#include "Platform/Linux/Input/LinuxEventTap.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

constexpr auto idleInterval = 20ms;
constexpr auto idleLimit = 2'000ms;

constexpr std::uint64_t keyMask = eventMask(EventType::keyDown) | eventMask(EventType::keyUp) |
                                  eventMask(EventType::flagsChanged) |
                                  eventMask(EventType::systemDefined);

}  // namespace

LinuxEventTaps::LinuxEventTaps() {
  timer_.setInterval(idleInterval);
  QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { letGoWhenIdle(); });
}

EventTapCreation LinuxEventTaps::createEventTap(std::uint64_t mask, EventTapCallbacks callbacks) {
  timer_.stop();
  leaving_.reset();
  auto* connection = toolkitConnection();
  if (!connection) return {};
  auto grab = std::make_unique<InputGrab>(
      connection,
      InputGrab::Devices{.keyboard = (mask & keyMask) != 0, .pointer = (mask & ~keyMask) != 0});
  const auto outcome = grab->take();
  if (outcome != InputGrab::Outcome::taken) {
    return {.tap = nullptr, .isBusy = outcome == InputGrab::Outcome::busy};
  }
  return {.tap = std::make_unique<LinuxEventTap>(
              std::move(grab), std::move(callbacks),
              lifetime_.wrap([this](std::unique_ptr<InputGrab> left) { leave(std::move(left)); }))};
}

void LinuxEventTaps::leave(std::unique_ptr<InputGrab> grab) {
  if (!grab->devices().keyboard) return;
  leaving_ = std::move(grab);
  since_.start();
  timer_.start();
  letGoWhenIdle();
}

void LinuxEventTaps::letGoWhenIdle() {
  leaving_->beat();
  if (!since_.hasExpired(idleLimit.count()) && hasPressedKeys(toolkitConnection())) return;
  timer_.stop();
  leaving_.reset();
}

}  // namespace zephyx
