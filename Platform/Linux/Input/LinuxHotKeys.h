#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <functional>
#include <map>
#include <utility>
#include <vector>

#include "Platform/HotKeys.h"
#include "Platform/LifetimeGuard.h"
#include "Platform/Linux/Input/KeyRepeat.h"
#include "Platform/Linux/Input/ToolkitEvents.h"

namespace zephyx {

/// Passive key grabs on the toolkit's connection, so that they get along with its own grabs. They
/// hold for the position of the key, with every state of Caps Lock and Num Lock. An active grab of
/// another program (an open menu, a locked screen) silences them. Where a combination is registered
/// twice, the first registration gets the presses.
class LinuxHotKeys : public HotKeys {
 public:
  LinuxHotKeys();
  ~LinuxHotKeys() override;

  HotKeyRegistration registerHotKey(std::uint32_t keyCode, std::uint32_t carbonModifiers,
                                    HotKeyIdentity identity) override;
  [[nodiscard]] Registration setPressedHandler(
      std::function<void(HotKeyIdentity)> handler) override;

  /// Runs `body` while these keys are not taken from other programs, for a chord that is typed on
  /// the same connection.
  void withoutGrab(std::uint8_t xKeycode, std::uint16_t xModifiers,
                   const std::function<void()>& body);

 private:
  using Combination = std::pair<std::uint8_t, std::uint16_t>;  // X key code and modifiers
  struct Entry {
    std::uint64_t token = 0;
    Combination combination;
    HotKeyIdentity identity;
  };

  bool filter(const xcb_generic_event_t& event);
  bool filterPress(const xcb_key_press_event_t& press);
  void deliver(std::uint64_t token);
  void unregister(std::uint64_t token);
  /// A `hotKeyStatus`; all variants or none.
  std::int32_t grab(Combination combination);
  void ungrab(Combination combination);
  std::vector<std::uint16_t> lockVariants(std::uint16_t modifiers) const;
  bool isMappingChange(const xcb_generic_event_t& event) const;
  void followModifierMap();

  xcb_connection_t* connection_;
  xcb_window_t root_ = XCB_NONE;
  std::uint8_t xkbFirstEvent_ = 0;
  std::uint16_t numLockMask_ = 0;
  bool isMapCheckPending_ = false;
  std::uint64_t nextToken_ = 1;
  std::vector<Entry> entries_;
  std::map<Combination, int> grabs_;  // how many entries share a grab
  std::uint64_t handlerToken_ = 0;
  std::function<void(HotKeyIdentity)> handler_;
  KeyRepeat repeat_;
  ToolkitEvents events_;
  LifetimeGuard guard_;
};

}  // namespace zephyx
