#pragma once

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

struct xcb_connection_t;

namespace zephyx {

/// X key codes of the keys that tests press: positions of a PC keyboard, whatever the layout.
namespace key {
enum Code : std::uint8_t {
  Escape = 9,
  Tab = 23,
  Q,
  E = 26,
  T = 28,
  P = 33,
  Return = 36,
  Control,
  A,
  S,
  D,
  K = 45,
  L,
  Shift = 50,
  Z = 52,
  C = 54,
  V,
  B,
  M = 58,
  Comma,
  Alt = 64,
  Space,
  CapsLock,
  NumLock = 77,
  Home = 110,
  Up,
  Left = 113,
  Right,
  End,
  Down,
  Delete = 119,
  Super = 133
};
}  // namespace key

/// Fingers on the keyboard and a hand on the mouse. Every method returns when the server has taken
/// the event.
class DesktopInput {
 public:
  /// Whose keys move: the device that programs synthesize with, or the keyboard under the user's
  /// fingers, which only this harness can move.
  enum class Keyboard { Synthetic, Physical };

  explicit DesktopInput(const std::string& display);
  DesktopInput(const DesktopInput&) = delete;
  DesktopInput& operator=(const DesktopInput&) = delete;
  /// Lets go of everything that is still held down.
  ~DesktopInput();

  void setKeyboard(Keyboard keyboard) { keyboard_ = keyboard; }
  void pressKey(std::uint8_t keyCode);
  void releaseKey(std::uint8_t keyCode);
  /// Presses in the given order and releases in the reverse one.
  void chord(std::initializer_list<std::uint8_t> keyCodes);
  void tap(std::uint8_t keyCode) { chord({keyCode}); }
  /// Lower-case letters, digits, blanks and line ends of a US layout.
  void type(const std::string& text);
  /// Of the keyboard's layouts, the one with this number is in effect from now on.
  void lockLayout(unsigned number);
  unsigned lockedLayout() const;
  /// The keys that the server holds for down, over all keyboards.
  std::vector<std::uint8_t> pressedKeys() const;

  void movePointer(int x, int y);
  void pressButton(int button = 1);
  void releaseButton(int button = 1);
  void click(int x, int y, int button = 1);

 private:
  void send(bool press, std::uint8_t keyCode);
  void fake(std::uint8_t type, std::uint8_t detail, int x, int y, std::uint8_t device);
  std::uint8_t physicalKeyboard() const;

  xcb_connection_t* connection_;
  std::uint32_t root_ = 0;
  Keyboard keyboard_ = Keyboard::Physical;
  std::uint8_t physicalDevice_ = 0;
  std::uint8_t deviceKeyPress_ = 0;
  std::vector<std::pair<Keyboard, std::uint8_t>> held_;
};

}  // namespace zephyx
