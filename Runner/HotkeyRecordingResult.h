#pragma once

#include <string>
#include <variant>

#include "Runner/HotkeyConfig.h"

namespace zephyx {

/// A combination was pressed. It has not been validated.
struct HotkeyCaptured {
  HotkeyConfig config;
  std::string display;
};

/// Escape, the time-out, a newer recording or a request ended it.
struct HotkeyRecordingCancelled {};

/// How the recording of a combination ended.
using HotkeyRecordingResult = std::variant<HotkeyCaptured, HotkeyRecordingCancelled>;

}  // namespace zephyx
