#include "Platform/Linux/Input/LinuxEventPoster.h"

#include <xcb/xtest.h>

#include <algorithm>
#include <chrono>

#include "Platform/Linux/Clipboard/LinuxPasteboard.h"
#include "Platform/Linux/Input/HeldKeys.h"
#include "Platform/Linux/Input/KeyCodes.h"
#include "Platform/Linux/Input/LayoutLock.h"
#include "Platform/Linux/Input/LinuxHotKeys.h"
#include "Platform/Linux/Input/TerminalPrograms.h"
#include "Platform/Linux/Input/ToolkitEvents.h"

namespace zephyx {
namespace {

using namespace std::chrono_literals;

constexpr auto releasePollInterval = 50ms;  // where the server does not tell
// A key that looks held for longer is let go of: a stuck modifier is worse than a lost one.
constexpr auto longestHold = 10'000ms;
constexpr std::uint8_t insertKey = 118;
constexpr std::uint16_t chordModifiers[] = {XCB_MOD_MASK_CONTROL, XCB_MOD_MASK_SHIFT,
                                            XCB_MOD_MASK_1};

std::uint16_t xModifiersFromCocoa(std::uint64_t flags) {
  unsigned mask = 0;
  if (flags & eventModifier::shift) mask |= XCB_MOD_MASK_SHIFT;
  if (flags & (eventModifier::control | eventModifier::command)) mask |= XCB_MOD_MASK_CONTROL;
  if (flags & eventModifier::option) mask |= XCB_MOD_MASK_1;
  return static_cast<std::uint16_t>(mask);
}

}  // namespace

LinuxEventPoster::LinuxEventPoster(LinuxPasteboard& pasteboard, LinuxHotKeys* hotKeys)
    : pasteboard_(pasteboard), hotKeys_(hotKeys) {
  if (auto* connection = toolkitConnection()) x11_.emplace(connection);
  releaseTimer_.setInterval(releasePollInterval);
  QObject::connect(&releaseTimer_, &QTimer::timeout, &releaseTimer_,
                   [this] { letGoOfReleasedKeys(); });
}

LinuxEventPoster::~LinuxEventPoster() {
  if (pressedAgain_.none()) return;
  fakeAll(false, pressedAgain_);
  xcb_flush(x11_->get());
}

bool LinuxEventPoster::postKey(std::uint16_t keyCode, std::uint64_t modifierFlags) {
  if (!x11_) return false;
  const auto* extension = xcb_get_extension_data(x11_->get(), &xcb_test_id);
  if (!extension || !extension->present) return false;
  const char letter =
      modifierFlags == eventModifier::command ? usLetterOfMacKeyCode(keyCode) : '\0';
  if (letter == 'c' && pasteStyleOf(activeWindowClass()) == PasteStyle::shiftInsert) {
    // There is no chord for copying: selecting is copying, and Control-C would end what runs.
    return pasteboard_.takeSelectedText(x11_->activeWindow());
  }
  const auto chord = chordFor(keyCode, modifierFlags);
  return chord && type(*chord);
}

std::optional<LinuxEventPoster::Chord> LinuxEventPoster::chordFor(std::uint16_t keyCode,
                                                                  std::uint64_t modifierFlags) {
  auto chord = keyFor(keyCode);
  chord.modifiers = xModifiersFromCocoa(modifierFlags);
  if (chord.key == 0) return std::nullopt;
  const char letter = usLetterOfMacKeyCode(keyCode);
  if (modifierFlags != eventModifier::command || (letter != 'v' && letter != 'c')) return chord;
  // Else another program's contents would be pasted.
  if (letter == 'v' && !pasteboard_.waitUntilOffered()) return std::nullopt;

  switch (pasteStyleOf(activeWindowClass())) {
    case PasteStyle::control:
      return chord;
    case PasteStyle::controlShift:
      chord.modifiers = XCB_MOD_MASK_CONTROL | XCB_MOD_MASK_SHIFT;
      return chord;
    case PasteStyle::shiftInsert:
      if (!pasteboard_.offerAsPrimary()) return std::nullopt;
      return Chord{insertKey, XCB_MOD_MASK_SHIFT, {}};
  }
  return std::nullopt;
}

LinuxEventPoster::Chord LinuxEventPoster::keyFor(std::uint16_t keyCode) const {
  const char letter = usLetterOfMacKeyCode(keyCode);
  // The keysyms of small Latin letters are their ASCII codes.
  if (letter) {
    const auto key = keymap_.keyWithSymbol(static_cast<xkb_keysym_t>(letter));
    if (key) return {key->code, 0, key->layout};
  }
  return {static_cast<std::uint8_t>(xKeycodeFromMac(keyCode)), 0, {}};
}

std::string LinuxEventPoster::activeWindowClass() {
  const auto window = x11_->activeWindow();
  if (window == XCB_NONE) return {};
  auto names = x11_->propertyText(window, "WM_CLASS");  // instance NUL class NUL
  const auto separator = names.find('\0');
  if (separator == std::string::npos) return names;
  return names.c_str() + separator + 1;
}

bool LinuxEventPoster::type(Chord chord) {
  auto* connection = x11_->get();
  const auto modifierMap = ModifierMap::read(connection);
  std::vector<std::uint8_t> modifiers;
  for (const auto modifier : chordModifiers) {
    if (!(chord.modifiers & modifier)) continue;
    const auto key = modifierMap.keyFor(modifier);
    if (key == 0) return false;
    modifiers.push_back(key);
  }

  // While a hot key is held its grab would bring the chord to this program.
  xcb_ungrab_keyboard(connection, XCB_CURRENT_TIME);
  const auto seen = keysSeenDown(connection);
  fakeAll(false, seen & ~modifierMap.lockKeys());
  // A key that is still down on the synthesizing keyboard, though nobody sees it, would swallow
  // the next press.
  for (const auto key : modifiers) fake(false, key);
  fake(false, chord.key);

  LayoutLock layout(connection);
  const auto pressAndRelease = [&] {
    for (const auto key : modifiers) fake(true, key);
    // Not every program looks for the letter in the other layouts; and for some users two
    // modifiers together are what switches between them.
    layout.choose(chord.layout);
    fake(true, chord.key);
    fake(false, chord.key);
    std::for_each(modifiers.rbegin(), modifiers.rend(), [&](auto key) { fake(false, key); });
  };
  if (hotKeys_) {
    hotKeys_->withoutGrab(chord.key, chord.modifiers, pressAndRelease);
  } else {
    pressAndRelease();
  }

  // The user still holds these: the next press of the hot key's own key must find them down.
  const auto held = seen & modifierMap.heldModifierKeys() & keysPhysicallyDown(connection);
  fakeAll(false, held);
  fakeAll(true, held);
  xcb_flush(connection);
  pressedAgain_ = held;
  if (held.any()) followHeldKeys();
  return true;
}

void LinuxEventPoster::fake(bool press, std::uint8_t key) {
  xcb_test_fake_input(x11_->get(), press ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key, XCB_CURRENT_TIME,
                      XCB_NONE, 0, 0, 0);
}

void LinuxEventPoster::fakeAll(bool press, const KeySet& keys) {
  for (std::size_t key = 0; key < keys.size(); ++key) {
    if (keys[key]) fake(press, static_cast<std::uint8_t>(key));
  }
}

void LinuxEventPoster::followHeldKeys() {
  sincePressedAgain_.start();
  releaseTimer_.start();
  // At once, or the user's next key would still be a chord.
  if (!releaseWatch_) releaseWatch_.emplace([this] { letGoOfReleasedKeys(); });
  letGoOfReleasedKeys();  // what was let go of before the watch began
}

void LinuxEventPoster::letGoOfReleasedKeys() {
  const bool isTooLong = sincePressedAgain_.elapsed() > longestHold.count();
  const auto held = isTooLong ? KeySet{} : keysPhysicallyDown(x11_->get());
  fakeAll(false, pressedAgain_ & ~held);
  xcb_flush(x11_->get());
  pressedAgain_ &= held;
  if (pressedAgain_.any()) return;
  releaseTimer_.stop();
  // The watch may be what called; and without it the user's typing wakes nobody.
  QTimer::singleShot(0, &releaseTimer_, [this] {
    if (pressedAgain_.none()) releaseWatch_.reset();
  });
}

}  // namespace zephyx
