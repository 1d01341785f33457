#import "Platform/macOS/MacHotKeys.h"

#include <utility>

namespace zephyx {
namespace {

using HotKey = OwnedHandle<EventHotKeyRef, UnregisterEventHotKey>;

static_assert(hotKeyStatus::exists == eventHotKeyExistsErr);
static_assert(hotKeyStatus::invalid == eventHotKeyInvalidErr);
static_assert(carbonModifier::command == cmdKey && carbonModifier::shift == shiftKey);
static_assert(carbonModifier::option == optionKey && carbonModifier::control == controlKey);

}  // namespace

MacHotKeys::MacHotKeys() {
  const EventTypeSpec pressedEvent = {kEventClassKeyboard, kEventHotKeyPressed};
  installed_ = InstallEventHandler(GetApplicationEventTarget(), pressed, 1, &pressedEvent, this,
                                   eventHandler_.out());
}

HotKeyRegistration MacHotKeys::registerHotKey(std::uint32_t keyCode, std::uint32_t carbonModifiers,
                                              HotKeyIdentity identity) {
  // Without the event handler a registered key would do nothing but be lost to everybody.
  if (installed_ != noErr) return {installed_, {}};
  const EventHotKeyID id = {identity.signature, identity.id};
  const auto hotKey = std::make_shared<HotKey>();
  const OSStatus status = RegisterEventHotKey(keyCode, carbonModifiers, id,
                                              GetApplicationEventTarget(), 0, hotKey->out());
  if (status != noErr || !*hotKey) return {status, {}};
  return {status, Registration([hotKey] { hotKey->reset(); })};
}

Registration MacHotKeys::setPressedHandler(std::function<void(HotKeyIdentity)> handler) {
  auto receiver = std::make_shared<Receiver>(Receiver{std::move(handler)});
  receiver_ = receiver;
  return Registration([receiver]() mutable { receiver.reset(); });
}

OSStatus MacHotKeys::pressed(EventHandlerCallRef, EventRef event, void* hotKeys) {
  EventHotKeyID id{};
  const OSStatus status = GetEventParameter(event, kEventParamDirectObject, typeEventHotKeyID,
                                            nullptr, sizeof id, nullptr, &id);
  if (status != noErr) return status;
  // Held for the call: the handler may replace itself.
  const auto receiver = static_cast<MacHotKeys*>(hotKeys)->receiver_.lock();
  if (!receiver) return eventNotHandledErr;
  @autoreleasepool {
    receiver->handler({id.signature, id.id});
  }
  return noErr;
}

}  // namespace zephyx
