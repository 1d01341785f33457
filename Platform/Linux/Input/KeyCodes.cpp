#include "Platform/Linux/Input/KeyCodes.h"

#include <array>

namespace zephyx {
namespace {

struct KeyPair {
  std::uint8_t mac;
  std::uint8_t evdev;
  char letter = 0;
};

// evdev codes as in linux/input-event-codes.h.
// clang-format off
constexpr KeyPair keyPairs[] = {
    {0x00, 30, 'a'}, {0x0B, 48, 'b'}, {0x08, 46, 'c'}, {0x02, 32, 'd'}, {0x0E, 18, 'e'},
    {0x03, 33, 'f'}, {0x05, 34, 'g'}, {0x04, 35, 'h'}, {0x22, 23, 'i'}, {0x26, 36, 'j'},
    {0x28, 37, 'k'}, {0x25, 38, 'l'}, {0x2E, 50, 'm'}, {0x2D, 49, 'n'}, {0x1F, 24, 'o'},
    {0x23, 25, 'p'}, {0x0C, 16, 'q'}, {0x0F, 19, 'r'}, {0x01, 31, 's'}, {0x11, 20, 't'},
    {0x20, 22, 'u'}, {0x09, 47, 'v'}, {0x0D, 17, 'w'}, {0x07, 45, 'x'}, {0x10, 21, 'y'},
    {0x06, 44, 'z'},
    // Digits, 0 to 9
    {0x1D, 11}, {0x12, 2}, {0x13, 3}, {0x14, 4}, {0x15, 5}, {0x17, 6}, {0x16, 7}, {0x1A, 8},
    {0x1C, 9}, {0x19, 10},
    // Punctuation: - = [ ] \ ' ; , . / ` and the ISO key beside the left Shift
    {0x1B, 12}, {0x18, 13}, {0x21, 26}, {0x1E, 27}, {0x2A, 43}, {0x27, 40}, {0x29, 39},
    {0x2B, 51}, {0x2F, 52}, {0x2C, 53}, {0x32, 41}, {0x0A, 86},
    // Return, Tab, Space, Delete, Escape, Help (Insert), forward Delete
    {0x24, 28}, {0x30, 15}, {0x31, 57}, {0x33, 14}, {0x35, 1}, {0x72, 110}, {0x75, 111},
    // Home, End, Page Up, Page Down, Left, Right, Down, Up
    {0x73, 102}, {0x77, 107}, {0x74, 104}, {0x79, 109}, {0x7B, 105}, {0x7C, 106}, {0x7D, 108},
    {0x7E, 103},
    // Modifiers: Command, Shift, Option, Control (left, right), Caps Lock
    {0x37, 125}, {0x36, 126}, {0x38, 42}, {0x3C, 54}, {0x3A, 56}, {0x3D, 100}, {0x3B, 29},
    {0x3E, 97}, {0x39, 58},
    // F1 to F20
    {0x7A, 59}, {0x78, 60}, {0x63, 61}, {0x76, 62}, {0x60, 63}, {0x61, 64}, {0x62, 65},
    {0x64, 66}, {0x65, 67}, {0x6D, 68}, {0x67, 87}, {0x6F, 88}, {0x69, 183}, {0x6B, 184},
    {0x71, 185}, {0x6A, 186}, {0x40, 187}, {0x4F, 188}, {0x50, 189}, {0x5A, 190},
    // Keypad: 0 to 9, . * + Clear (Num Lock) / Enter - =
    {0x52, 82}, {0x53, 79}, {0x54, 80}, {0x55, 81}, {0x56, 75}, {0x57, 76}, {0x58, 77},
    {0x59, 71}, {0x5B, 72}, {0x5C, 73}, {0x41, 83}, {0x43, 55}, {0x45, 78}, {0x47, 69},
    {0x4B, 98}, {0x4C, 96}, {0x4E, 74}, {0x51, 117},
    // Volume up, down, mute; Japanese: yen, underscore, keypad comma, Eisu, Kana
    {0x48, 115}, {0x49, 114}, {0x4A, 113}, {0x5D, 124}, {0x5E, 89}, {0x5F, 95}, {0x66, 94},
    {0x68, 92},
};
// clang-format on

constexpr int evdevToX = 8;
constexpr std::uint8_t noMacKey = 0xFF;

struct Tables {
  std::array<std::uint8_t, 128> xFromMac{};
  std::array<char, 128> letters{};
  std::array<std::uint8_t, 256> macFromX{};
};

constexpr Tables makeTables() {
  Tables result;
  for (auto& mac : result.macFromX) mac = noMacKey;
  for (const auto& key : keyPairs) {
    const auto x = static_cast<std::uint8_t>(key.evdev + evdevToX);
    // A position that stands twice would make the two directions disagree.
    if (result.xFromMac[key.mac] != 0 || result.macFromX[x] != noMacKey) throw "duplicate key";
    result.xFromMac[key.mac] = x;
    result.letters[key.mac] = key.letter;
    result.macFromX[x] = key.mac;
  }
  return result;
}

constexpr Tables tables = makeTables();

}  // namespace

int xKeycodeFromMac(std::uint32_t macKeyCode) {
  return macKeyCode < tables.xFromMac.size() ? tables.xFromMac[macKeyCode] : 0;
}

std::optional<std::uint16_t> macKeyCodeFromX(int xKeycode) {
  if (xKeycode < 0 || xKeycode > 255) return std::nullopt;
  const auto mac = tables.macFromX[static_cast<std::size_t>(xKeycode)];
  if (mac == noMacKey) return std::nullopt;
  return mac;
}

bool isModifierKeyCode(std::uint32_t macKeyCode) {
  return macKeyCode >= 0x36 && macKeyCode <= 0x3E;
}

char usLetterOfMacKeyCode(std::uint32_t macKeyCode) {
  return macKeyCode < tables.letters.size() ? tables.letters[macKeyCode] : '\0';
}

}  // namespace zephyx
