#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QTimer>
#include <cstdint>
#include <optional>
#include <vector>

#include "Platform/Events.h"
#include "Platform/Linux/Input/KeyReleaseWatch.h"
#include "Platform/Linux/Input/ModifierMap.h"
#include "Platform/Linux/Input/XkbKeymap.h"
#include "Platform/Linux/X11.h"

namespace zephyx {

class LinuxHotKeys;
class LinuxPasteboard;

/// Types through the server's test extension, on the connection that owns the hot keys. Command
/// becomes what the program in front understands: Control, and in terminals their own chords; where
/// a terminal has none for copying, its selected text is taken instead.
class LinuxEventPoster : public EventPoster {
 public:
  /// Both outlive this object. `hotKeys` step aside while their own chord is typed.
  explicit LinuxEventPoster(LinuxPasteboard& pasteboard, LinuxHotKeys* hotKeys = nullptr);
  ~LinuxEventPoster() override;

  bool postKey(std::uint16_t keyCode, std::uint64_t modifierFlags) override;

 private:
  struct Chord {
    std::uint8_t key = 0;
    std::uint16_t modifiers = 0;         // X modifier bits
    std::optional<std::uint8_t> layout;  // in which the key means it; nothing for any
  };

  std::optional<Chord> chordFor(std::uint16_t keyCode, std::uint64_t modifierFlags);
  Chord keyFor(std::uint16_t keyCode) const;
  std::string activeWindowClass();
  bool type(Chord chord);
  void fake(bool press, std::uint8_t key);
  void fakeAll(bool press, const KeySet& keys);
  void followHeldKeys();
  void letGoOfReleasedKeys();

  LinuxPasteboard& pasteboard_;
  LinuxHotKeys* hotKeys_;
  std::optional<X11Connection> x11_;
  XkbKeymap keymap_;
  // Modifiers that were taken from under the user's fingers for a chord and pressed again after it:
  // nobody else lets go of these synthesized presses.
  KeySet pressedAgain_;
  std::optional<KeyReleaseWatch> releaseWatch_;  // while some of these are held
  QTimer releaseTimer_;
  QElapsedTimer sincePressedAgain_;
};

}  // namespace zephyx
