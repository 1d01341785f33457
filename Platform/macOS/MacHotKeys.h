#pragma once

#import <Carbon/Carbon.h>

#include <cstdint>
#include <functional>
#include <memory>

#include "Platform/HotKeys.h"
#include "Platform/macOS/OwnedHandle.h"

namespace zephyx {

/// The system's hot-key service. It repeats no press, works during secure input, and needs no
/// permission. Neither copied nor moved: the system calls back with its address.
class MacHotKeys final : public HotKeys {
 public:
  MacHotKeys();
  MacHotKeys(const MacHotKeys&) = delete;
  MacHotKeys& operator=(const MacHotKeys&) = delete;

  HotKeyRegistration registerHotKey(std::uint32_t keyCode, std::uint32_t carbonModifiers,
                                    HotKeyIdentity identity) override;
  [[nodiscard]] Registration setPressedHandler(
      std::function<void(HotKeyIdentity)> handler) override;

 private:
  struct Receiver {
    std::function<void(HotKeyIdentity)> handler;
  };

  static OSStatus pressed(EventHandlerCallRef call, EventRef event, void* hotKeys);

  std::weak_ptr<Receiver> receiver_;
  OSStatus installed_ = noErr;
  OwnedHandle<EventHandlerRef, RemoveEventHandler> eventHandler_;  // goes first
};

}  // namespace zephyx
