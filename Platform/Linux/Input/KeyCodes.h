#pragma once

#include <cstdint>
#include <optional>

namespace zephyx {

/// macOS virtual key codes and X key codes name positions on the keyboard, whatever the layout.

/// The X key code at the position of a macOS virtual key code; 0 when there is none.
int xKeycodeFromMac(std::uint32_t macKeyCode);
std::optional<std::uint16_t> macKeyCodeFromX(int xKeycode);

/// Whether it is one of Command, Shift, Caps Lock, Option and Control.
bool isModifierKeyCode(std::uint32_t macKeyCode);

/// The small Latin letter that a macOS virtual key code stands for on the US layout; 0 when it is
/// not a letter.
char usLetterOfMacKeyCode(std::uint32_t macKeyCode);

}  // namespace zephyx
