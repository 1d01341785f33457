#include "Platform/Linux/Input/LinuxKeyboardLayout.h"

#include <QtCore/QString>

#include "Platform/Linux/Input/KeyCodes.h"

namespace zephyx {
namespace {

/// Keysyms like Escape and Return map to control characters: nothing that a key cap would show.
bool isPrinted(std::uint32_t character) {
  return character >= 0x20 && character != 0x7f && (character < 0x80 || character >= 0xa0);
}

}  // namespace

std::string LinuxKeyboardLayout::character(std::uint32_t keyCode) const {
  const int key = xKeycodeFromMac(keyCode);
  if (key == 0) return {};
  const auto character =
      char32_t{xkb_keysym_to_utf32(keymap_.symbol(static_cast<std::uint8_t>(key)))};
  if (!isPrinted(character)) return {};
  return QString::fromUcs4(&character, 1).toStdString();
}

std::string LinuxKeyboardLayout::uppercased(const std::string& text) const {
  return QString::fromStdString(text).toUpper().toStdString();
}

std::string LinuxKeyboardLayout::lowercased(const std::string& text) const {
  return QString::fromStdString(text).toLower().toStdString();
}

}  // namespace zephyx
