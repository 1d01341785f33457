#pragma once

namespace zephyx {

/// Why a combination was not taken.
enum class HotkeyError {
  duplicate,           ///< another hotkey has it
  invalid,             ///< none of Command, Control and Option in it
  registrationFailed,  ///< the system refused it; the previous one is still in force
};

/// As they stand in a channel error.
constexpr const char* code(HotkeyError error) {
  switch (error) {
    case HotkeyError::duplicate:
      return "duplicate";
    case HotkeyError::invalid:
      return "invalid";
    case HotkeyError::registrationFailed:
      return "registrationFailed";
  }
  return "internal";
}

constexpr const char* message(HotkeyError error) {
  switch (error) {
    case HotkeyError::duplicate:
      return "Ese combo ya está asignado a otro atajo.";
    case HotkeyError::invalid:
      return "El combo debe incluir ⌘, ⌃ u ⌥ — Shift solo no alcanza.";
    case HotkeyError::registrationFailed:
      return "No se pudo registrar el atajo con macOS. Se mantuvo el anterior.";
  }
  return "";
}

}  // namespace zephyx
