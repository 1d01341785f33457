#include "Platform/Linux/Input/LinuxKeyboardLayout.h"

#include <QtCore/QString>
#include <algorithm>
#include <iterator>

#include "Platform/Linux/Input/KeyCodes.h"

namespace zephyx {
namespace {

/// A dead key prints nothing by itself; its cap shows this.
struct DeadKey {
  xkb_keysym_t symbol;
  char32_t sign;
};
constexpr DeadKey deadKeys[] = {
    {XKB_KEY_dead_grave, U'`'},      {XKB_KEY_dead_acute, U'´'},
    {XKB_KEY_dead_circumflex, U'^'}, {XKB_KEY_dead_tilde, U'~'},
    {XKB_KEY_dead_macron, U'¯'},     {XKB_KEY_dead_breve, U'˘'},
    {XKB_KEY_dead_abovedot, U'˙'},   {XKB_KEY_dead_diaeresis, U'¨'},
    {XKB_KEY_dead_abovering, U'˚'},  {XKB_KEY_dead_doubleacute, U'˝'},
    {XKB_KEY_dead_caron, U'ˇ'},      {XKB_KEY_dead_cedilla, U'¸'},
    {XKB_KEY_dead_ogonek, U'˛'},
};

char32_t characterOf(xkb_keysym_t symbol) {
  const auto* dead = std::find_if(std::begin(deadKeys), std::end(deadKeys),
                                  [=](const DeadKey& each) { return each.symbol == symbol; });
  return dead == std::end(deadKeys) ? char32_t{xkb_keysym_to_utf32(symbol)} : dead->sign;
}

/// Keysyms like Escape and Return map to control characters: nothing that a key cap would show.
bool isPrinted(std::uint32_t character) {
  return character >= 0x20 && character != 0x7f && (character < 0x80 || character >= 0xa0);
}

}  // namespace

std::string LinuxKeyboardLayout::character(std::uint32_t keyCode) const {
  const int key = xKeycodeFromMac(keyCode);
  if (key == 0) return {};
  const char32_t character = characterOf(keymap_.symbol(static_cast<std::uint8_t>(key)));
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
