#pragma once

#include <string>

namespace zephyx {

/// How a program takes text from the clipboard by keyboard.
enum class PasteStyle {
  control,       ///< Control-V, like most programs
  controlShift,  ///< Control-Shift-V: terminals that keep Control-V for what runs in them
  shiftInsert,   ///< Shift-Insert, which inserts the primary selection: xterm and its relatives
};

/// `windowClass` is the class part of WM_CLASS.
PasteStyle pasteStyleOf(const std::string& windowClass);

}  // namespace zephyx
