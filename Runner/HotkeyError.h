#pragma once

namespace zephyx {

/// Why a combination was not taken.
enum class HotkeyError {
  duplicate,           ///< another hotkey has it
  invalid,             ///< none of Command, Control and Option in it
  registrationFailed,  ///< the system refused it; the previous one is still in force
};

}  // namespace zephyx
